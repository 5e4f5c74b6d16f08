#include "base/textio.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <map>
#include <optional>
#include <utility>

#include "base/convert.h"
#include "base/files.h"
#include "base/kept_listings.h"
#include "base/vb_error.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBlockSize = 1 << 20;  // written when the buffer holds this much
constexpr std::size_t kStartSize = 1 << 14;  // most files are small: the buffer grows

constexpr int kPermissionDenied = 70;
constexpr int kPathFileAccessError = 75;

// A file by its identity (device and inode), so that every name of one file is the same
// file, found with the one fstat of the open descriptor rather than a walk of the path.
using FileKey = std::pair<std::uint64_t, std::uint64_t>;

// The files this process holds open: writers by descriptor, readers by identity. A writer
// excludes everyone else; readers may share. A writer opened while nothing else was open
// learns its identity only when a later open needs it, so the common case, one file at a
// time, costs no fstat.
struct OpenFiles {
    std::map<int, std::optional<FileKey>> writers;
    std::map<FileKey, int> readers;

    bool empty() const { return writers.empty() && readers.empty(); }
    bool written(const FileKey& key) {
        for (auto& [fd, known] : writers) {
            if (!known) {
                struct stat info {};
                if (::fstat(fd, &info) != 0) continue;
                known = FileKey{static_cast<std::uint64_t>(info.st_dev),
                                static_cast<std::uint64_t>(info.st_ino)};
            }
            if (*known == key) return true;
        }
        return false;
    }
    void acquireWriter(int fd, const std::optional<FileKey>& key) {
        if (key && (readers.count(*key) > 0 || written(*key)))
            throw VbError(vberr::FileAlreadyOpen);
        writers[fd] = key;
    }
    void releaseWriter(int fd) { writers.erase(fd); }
    void acquireReader(const FileKey& key) {
        if (written(key)) throw VbError(vberr::FileAlreadyOpen);
        ++readers[key];
    }
    void releaseReader(const FileKey& key) {
        auto it = readers.find(key);
        if (it != readers.end() && --it->second <= 0) readers.erase(it);
    }
};

OpenFiles& openFiles() {
    static OpenFiles files;
    return files;
}

// The buffer of the file last closed, kept for the next one: a run writes two small files
// a product, and each would otherwise take a fresh buffer and give it back.
std::string& spareBuffer() {
    static std::string spare;
    return spare;
}

// The fault of an open that failed with `error`: a missing or broken folder 76, a folder
// given as the file 75, no permission 70; `missing` when the folder stands but the file
// does not.
[[noreturn]] void throwOpenFault(int error, const std::string& path, int missing) {
    if (error == EISDIR) throw VbError(kPathFileAccessError, "Path/File access error");
    if (error == EACCES || error == EPERM) throw VbError(kPermissionDenied, "Permission denied");
    if (error == ENOTDIR) throw VbError(vberr::PathNotFound);
    if (error == ENOENT) {
        std::error_code ec;
        const fs::path folder = fs::path(path).parent_path();
        if (!folder.empty() && !fs::is_directory(folder, ec)) throw VbError(vberr::PathNotFound);
        throw VbError(missing);
    }
    throw VbError(kPathFileAccessError, "Path/File access error");
}

// The identity of an open descriptor; a folder is refused (75) and the descriptor closed.
FileKey keyOf(int fd, std::size_t* size = nullptr) {
    struct stat info {};
    if (::fstat(fd, &info) != 0 || S_ISDIR(info.st_mode)) {
        ::close(fd);
        throw VbError(kPathFileAccessError, "Path/File access error");
    }
    if (size) *size = static_cast<std::size_t>(info.st_size);
    return {static_cast<std::uint64_t>(info.st_dev), static_cast<std::uint64_t>(info.st_ino)};
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
    : fd_(std::exchange(other.fd_, -1)),
      buffer_(std::move(other.buffer_)),
      keepAs_(std::move(other.keepAs_)),
      written_(other.written_),
      inPlace_(std::exchange(other.inPlace_, false)),
      keptSize_(other.keptSize_) {}

TextFileWriter& TextFileWriter::operator=(TextFileWriter&& other) noexcept {
    if (this != &other) {
        try {
            close();
        } catch (...) {
        }
        fd_ = std::exchange(other.fd_, -1);
        buffer_ = std::move(other.buffer_);
        keepAs_ = std::move(other.keepAs_);
        written_ = other.written_;
        inPlace_ = std::exchange(other.inPlace_, false);
        keptSize_ = other.keptSize_;
    }
    return *this;
}

void TextFileWriter::open(const std::string& path, Mode mode) {
    if (fd_ >= 0) throw VbError(vberr::FileAlreadyOpen);
    if (path.empty()) throw VbError(vberr::BadFileNameOrNumber);
    OpenFiles& files = openFiles();
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (mode == Mode::Append ? O_APPEND : 0);
    const bool rewrite = mode == Mode::Output && files.empty();
    const int kept = TakeKeptWriter(path, keptSize_, rewrite);
    keepAs_.clear();
    written_ = 0;
    inPlace_ = false;
    if (kept >= 0 && !rewrite) ::close(kept);
    if (kept >= 0 && rewrite) {
        // The file this run wrote last, written again: in place, emptied at close.
        files.acquireWriter(kept, std::nullopt);
        fd_ = kept;
        inPlace_ = true;
        keepAs_ = path;
    } else if (files.empty()) {
        // Nothing else is open, so nothing can be this file: replaced at once.
        const int fd = ::open(path.c_str(), flags | (mode == Mode::Output ? O_TRUNC : 0), 0666);
        if (fd < 0) throwOpenFault(errno, path, kPathFileAccessError);
        files.acquireWriter(fd, std::nullopt);
        fd_ = fd;
        if (mode == Mode::Output) keepAs_ = path;
    } else if (const int created = ::open(path.c_str(), flags | O_EXCL, 0666); created >= 0) {
        // A file this open made is none of the open ones: nothing to check, nothing to
        // empty, and its identity is learnt only if a later open asks.
        files.acquireWriter(created, std::nullopt);
        fd_ = created;
    } else {
        // Opened without truncating: a file that is already open must keep its contents.
        // (Whatever stopped the creation, the plain open decides the fault.)
        const int fd = ::open(path.c_str(), flags, 0666);
        if (fd < 0) throwOpenFault(errno, path, kPathFileAccessError);
        std::size_t size = 0;
        const FileKey key = keyOf(fd, &size);
        try {
            files.acquireWriter(fd, key);
        } catch (...) {
            ::close(fd);
            throw;
        }
        if (mode == Mode::Output && size > 0 && ::ftruncate(fd, 0) != 0) {
            files.releaseWriter(fd);
            ::close(fd);
            throw VbError(kPathFileAccessError, "Path/File access error");
        }
        fd_ = fd;
    }
    NoteWritten(path);
    if (buffer_.capacity() < kStartSize) buffer_.swap(spareBuffer());
    buffer_.clear();
    buffer_.reserve(kStartSize);
}

void TextFileWriter::write(std::string_view text) {
    if (fd_ < 0) throw VbError(vberr::BadFileNameOrNumber);
    buffer_.append(text);
    if (buffer_.size() >= kBlockSize) flush();
}

void TextFileWriter::printLine(std::string_view line) {
    if (fd_ < 0) throw VbError(vberr::BadFileNameOrNumber);
    buffer_.append(line).append("\r\n");
    if (buffer_.size() >= kBlockSize) flush();
}

void TextFileWriter::printLine(std::initializer_list<std::string_view> parts) {
    if (fd_ < 0) throw VbError(vberr::BadFileNameOrNumber);
    for (std::string_view part : parts)
        buffer_.append(part);
    write("\r\n");
}

void TextFileWriter::endBuilt(std::size_t mark) {
    if (fd_ < 0) {
        buffer_.resize(mark);
        throw VbError(vberr::BadFileNameOrNumber);
    }
    write("\r\n");
}

void TextFileWriter::printValue(const Variant& v) {
    printLine(printForm(v));
}

bool TextFileWriter::put() {
    std::size_t done = 0;
    while (done < buffer_.size()) {
        const char* from = buffer_.data() + done;
        const std::size_t left = buffer_.size() - done;
        const ssize_t wrote = inPlace_ ? ::pwrite(fd_, from, left, static_cast<off_t>(written_))
                                       : ::write(fd_, from, left);
        if (wrote < 0 && errno == EINTR) continue;
        if (wrote <= 0) break;
        done += static_cast<std::size_t>(wrote);
        written_ += wrote;
    }
    const bool complete = done == buffer_.size();
    buffer_.clear();
    return complete;
}

void TextFileWriter::flush() {
    if (!put()) throw VbError(61, "Disk full");
}

void TextFileWriter::close() {
    if (fd_ < 0) return;
    openFiles().releaseWriter(fd_);
    // A whole rewrite in place that the file's length holds waits for the next one.
    const bool waits = inPlace_ && written_ == 0 && WriteBehind(keepAs_, fd_, keptSize_, buffer_);
    bool ok = true;
    if (!waits) {
        ok = put();
        // A file rewritten in place loses what is left of its longer last contents.
        if (ok && inPlace_ && written_ < keptSize_ &&
            ::ftruncate(fd_, static_cast<off_t>(written_)) != 0)
            ok = false;
    }
    const int fd = std::exchange(fd_, -1);
    inPlace_ = false;
    buffer_.clear();
    if (std::string& spare = spareBuffer();
        spare.capacity() < kStartSize && buffer_.capacity() <= kStartSize)
        spare.swap(buffer_);
    if (waits || (ok && !keepAs_.empty() && KeepWriter(keepAs_, fd, written_))) {
        keepAs_.clear();
        return;
    }
    keepAs_.clear();
    if (::close(fd) != 0) ok = false;
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
      key_(other.key_),
      open_(std::exchange(other.open_, false)) {}

TextFileReader& TextFileReader::operator=(TextFileReader&& other) noexcept {
    if (this != &other) {
        close();
        data_ = std::move(other.data_);
        pos_ = other.pos_;
        key_ = other.key_;
        open_ = std::exchange(other.open_, false);
    }
    return *this;
}

void TextFileReader::open(const std::string& path) {
    if (open_) throw VbError(vberr::FileAlreadyOpen);
    if (path.empty()) throw VbError(vberr::BadFileNameOrNumber);
    SettleWrites();
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) throwOpenFault(errno, path, vberr::FileNotFound);
    std::size_t size = 0;
    const FileKey key = keyOf(fd, &size);
    std::string data;
    ReadToEnd(fd, size, data);
    ::close(fd);
    openFiles().acquireReader(key);
    data_ = std::move(data);
    pos_ = 0;
    key_ = key;
    open_ = true;
}

void TextFileReader::close() {
    if (!open_) return;
    openFiles().releaseReader(key_);
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
