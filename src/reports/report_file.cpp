#include "reports/report_file.h"

#include <filesystem>

#include "base/vb_error.h"

ReportFile::ReportFile(std::string path, Writer writer)
    : path_(std::move(path)), writer_(std::move(writer)) {}

ReportFile::~ReportFile() {
    // A run that stopped half way leaves no half a document behind.
    if (file_.is_open() && !ended_) {
        out_.reset();
        file_.close();
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
}

void ReportFile::begin(const ReportFrame& frame) {
    file_.open(path_, std::ios::binary | std::ios::trunc);
    check();
    out_ = writer_(file_);
    out_->begin(frame);
}

void ReportFile::page(const ReportPage& page) {
    out_->page(page);
    check();
}

void ReportFile::end() {
    out_->end();
    file_.flush();
    check();
    ended_ = true;
}

void ReportFile::check() {
    if (!file_) throw VbError(75, "Path/File access error");
}
