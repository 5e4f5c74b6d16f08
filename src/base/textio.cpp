#include "base/textio.h"

#include <cerrno>
#include <filesystem>
#include <map>
#include <utility>

#include "base/convert.h"
#include "base/vb_error.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBlockSize = 1 << 20;

constexpr int kPermissionDenied = 70;
constexpr int kPathFileAccessError = 75;

// The files this process holds open, by path: how many readers, and whether a writer.
// A writer excludes everyone else; readers may share.
struct OpenFiles {
    std::map<std::string, std::pair<int, bool>> files;

    void acquire(const std::string& key, bool writer) {
        auto& [readers, hasWriter] = files[key];
        if (hasWriter || (writer && readers > 0)) {
            if (readers == 0 && !hasWriter) files.erase(key);
            throw VbError(vberr::FileAlreadyOpen);
        }
        if (writer) {
            hasWriter = true;
        } else {
            ++readers;
        }
    }
    void release(const std::string& key, bool writer) {
        auto it = files.find(key);
        if (it == files.end()) return;
        if (writer) {
            it->second.second = false;
        } else if (it->second.first > 0) {
            --it->second.first;
        }
        if (it->second.first == 0 && !it->second.second) files.erase(it);
    }
};

OpenFiles& openFiles() {
    static OpenFiles files;
    return files;
}

// Checks the name and its folder, and gives the key that identifies the file.
std::string checkedKey(const std::string& path) {
    if (path.empty()) throw VbError(vberr::BadFileNameOrNumber);
    std::error_code ec;
    const fs::path p(path);
    const fs::path folder = p.parent_path();
    if (!folder.empty() && !fs::is_directory(folder, ec)) throw VbError(vberr::PathNotFound);
    if (fs::is_directory(p, ec)) throw VbError(kPathFileAccessError, "Path/File access error");
    fs::path canonical = fs::weakly_canonical(fs::absolute(p, ec), ec);
    return ec ? p.lexically_normal().string() : canonical.string();
}

std::string numberPrintForm(const Variant& v) {
    std::string text = CStr(v);
    const bool negative = !text.empty() && text[0] == '-';
    std::string digits = negative ? text.substr(1) : text;
    if (digits.size() > 1 && digits[0] == '0' && digits[1] == '.') digits.erase(0, 1);
    return (negative ? "-" : " ") + digits + " ";
}

}  // namespace

std::string printForm(const Variant& v) {
    switch (v.Type()) {
        case VarType::Empty:
            return "";
        case VarType::Null:
            return "Null";
        case VarType::Integer:
        case VarType::Long:
        case VarType::Single:
        case VarType::Double:
        case VarType::Currency:
            return numberPrintForm(v);
        default:
            return CStr(v);
    }
}

TextFileWriter::TextFileWriter(const std::string& path, Mode mode) {
    open(path, mode);
}

TextFileWriter::~TextFileWriter() {
    try {
        close();
    } catch (...) {
        // A destructor cannot report; an explicit close() does.
    }
}

TextFileWriter::TextFileWriter(TextFileWriter&& other) noexcept
    : file_(std::exchange(other.file_, nullptr)),
      key_(std::move(other.key_)),
      buffer_(std::move(other.buffer_)) {}

TextFileWriter& TextFileWriter::operator=(TextFileWriter&& other) noexcept {
    if (this != &other) {
        try {
            close();
        } catch (...) {
        }
        file_ = std::exchange(other.file_, nullptr);
        key_ = std::move(other.key_);
        buffer_ = std::move(other.buffer_);
    }
    return *this;
}

void TextFileWriter::open(const std::string& path, Mode mode) {
    if (file_) throw VbError(vberr::FileAlreadyOpen);
    const std::string key = checkedKey(path);
    openFiles().acquire(key, true);
    std::FILE* file = std::fopen(path.c_str(), mode == Mode::Append ? "ab" : "wb");
    if (!file) {
        const int error = errno;
        openFiles().release(key, true);
        if (error == EACCES || error == EPERM)
            throw VbError(kPermissionDenied, "Permission denied");
        throw VbError(kPathFileAccessError, "Path/File access error");
    }
    file_ = file;
    key_ = key;
    buffer_.clear();
    buffer_.reserve(kBlockSize);
}

void TextFileWriter::write(std::string_view text) {
    if (!file_) throw VbError(vberr::BadFileNameOrNumber);
    buffer_.append(text);
    if (buffer_.size() >= kBlockSize) flush();
}

void TextFileWriter::printLine(std::string_view line) {
    write(line);
    write("\r\n");
}

void TextFileWriter::printValue(const Variant& v) {
    printLine(printForm(v));
}

void TextFileWriter::flush() {
    if (buffer_.empty()) return;
    const std::size_t written = std::fwrite(buffer_.data(), 1, buffer_.size(), file_);
    const bool complete = written == buffer_.size();
    buffer_.clear();
    if (!complete) throw VbError(61, "Disk full");
}

void TextFileWriter::close() {
    if (!file_) return;
    std::FILE* file = std::exchange(file_, nullptr);
    openFiles().release(key_, true);
    bool ok = true;
    if (!buffer_.empty()) {
        ok = std::fwrite(buffer_.data(), 1, buffer_.size(), file) == buffer_.size();
        buffer_.clear();
    }
    if (std::fclose(file) != 0) ok = false;
    if (!ok) throw VbError(61, "Disk full");
}

TextFileReader::TextFileReader(const std::string& path) {
    open(path);
}

TextFileReader::~TextFileReader() {
    close();
}

TextFileReader::TextFileReader(TextFileReader&& other) noexcept
    : data_(std::move(other.data_)),
      pos_(other.pos_),
      key_(std::move(other.key_)),
      open_(std::exchange(other.open_, false)) {}

TextFileReader& TextFileReader::operator=(TextFileReader&& other) noexcept {
    if (this != &other) {
        close();
        data_ = std::move(other.data_);
        pos_ = other.pos_;
        key_ = std::move(other.key_);
        open_ = std::exchange(other.open_, false);
    }
    return *this;
}

void TextFileReader::open(const std::string& path) {
    if (open_) throw VbError(vberr::FileAlreadyOpen);
    const std::string key = checkedKey(path);
    std::error_code ec;
    if (!fs::exists(fs::path(path), ec)) throw VbError(vberr::FileNotFound);
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) {
        if (errno == EACCES || errno == EPERM)
            throw VbError(kPermissionDenied, "Permission denied");
        throw VbError(vberr::FileNotFound);
    }
    std::string data;
    char block[1 << 16];
    for (;;) {
        const std::size_t got = std::fread(block, 1, sizeof block, file);
        data.append(block, got);
        if (got < sizeof block) break;
    }
    std::fclose(file);
    openFiles().acquire(key, false);
    data_ = std::move(data);
    pos_ = 0;
    key_ = key;
    open_ = true;
}

void TextFileReader::close() {
    if (!open_) return;
    openFiles().release(key_, false);
    open_ = false;
    data_.clear();
    data_.shrink_to_fit();
    pos_ = 0;
}

void TextFileReader::requireMore() const {
    if (!open_) throw VbError(vberr::BadFileNameOrNumber);
    if (eof()) throw VbError(vberr::InputPastEndOfFile);
}

bool TextFileReader::atLineEnd() const {
    return pos_ < data_.size() && (data_[pos_] == '\r' || data_[pos_] == '\n');
}

void TextFileReader::skipLineEnd() {
    if (pos_ >= data_.size()) return;
    if (data_[pos_] == '\r') {
        ++pos_;
        if (pos_ < data_.size() && data_[pos_] == '\n') ++pos_;
    } else if (data_[pos_] == '\n') {
        ++pos_;
    }
}

std::string TextFileReader::lineInput() {
    requireMore();
    const std::size_t end = data_.find_first_of("\r\n", pos_);
    const std::size_t stop = end == std::string::npos ? data_.size() : end;
    std::string line = data_.substr(pos_, stop - pos_);
    pos_ = stop;
    skipLineEnd();
    return line;
}

std::string TextFileReader::input() {
    requireMore();
    while (pos_ < data_.size() && (data_[pos_] == ' ' || data_[pos_] == '\t'))
        ++pos_;
    std::string value;
    if (pos_ < data_.size() && data_[pos_] == '"') {
        const std::size_t close = data_.find('"', pos_ + 1);
        const std::size_t stop = close == std::string::npos ? data_.size() : close;
        value = data_.substr(pos_ + 1, stop - pos_ - 1);
        pos_ = stop == data_.size() ? stop : stop + 1;
        // Whatever follows the closing quote up to the comma or line end is dropped.
        const std::size_t end = data_.find_first_of(",\r\n", pos_);
        pos_ = end == std::string::npos ? data_.size() : end;
    } else {
        const std::size_t end = data_.find_first_of(",\r\n", pos_);
        const std::size_t stop = end == std::string::npos ? data_.size() : end;
        std::size_t last = stop;
        while (last > pos_ && (data_[last - 1] == ' ' || data_[last - 1] == '\t'))
            --last;
        value = data_.substr(pos_, last - pos_);
        pos_ = stop;
    }
    if (pos_ < data_.size() && data_[pos_] == ',') {
        ++pos_;
    } else {
        skipLineEnd();
    }
    return value;
}
