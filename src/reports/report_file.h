#pragma once

#include <fstream>
#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "reports/report_run.h"

// A report's output written to a file, made when the first page is ready: a report that
// does not run leaves a file of that name as it was. A file that cannot be written is fault
// 75; a run that fails half way leaves no file.
class ReportFile : public ReportPages {
  public:
    using Writer = std::function<std::unique_ptr<ReportPages>(std::ostream& out)>;
    ReportFile(std::string path, Writer writer);
    ~ReportFile() override;
    void begin(const ReportFrame& frame) override;
    void page(const ReportPage& page) override;
    void end() override;

  private:
    void check();
    std::string path_;
    Writer writer_;
    std::ofstream file_;
    std::unique_ptr<ReportPages> out_;
    bool ended_ = false;
};
