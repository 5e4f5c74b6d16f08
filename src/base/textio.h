#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "base/variant.h"

// What the print statement writes for a value: a number with a leading blank (or "-")
// and one trailing blank, without the 0 before the point (" 5 ", "-3 ", " .5 "); a
// Boolean "True"/"False"; a text as it stands; Empty ""; Null "Null"; a date as its text.
std::string printForm(const Variant& v);

// A text file opened for output (replacing it) or append, written line by line with
// CR LF line ends in large buffered blocks. Faults: an empty name is VbError 52, a
// missing folder 76, a file already open 55, a folder or unwritable file 75 or 70.
class TextFileWriter {
  public:
    enum class Mode { Output, Append };

    TextFileWriter() = default;
    explicit TextFileWriter(const std::string& path, Mode mode = Mode::Output);
    ~TextFileWriter();
    TextFileWriter(const TextFileWriter&) = delete;
    TextFileWriter& operator=(const TextFileWriter&) = delete;
    TextFileWriter(TextFileWriter&& other) noexcept;
    TextFileWriter& operator=(TextFileWriter&& other) noexcept;

    void open(const std::string& path, Mode mode = Mode::Output);
    bool isOpen() const { return fd_ >= 0; }

    // Print #n, line
    void printLine(std::string_view line);
    // Print #n, a; b; c: the parts, then the line end, with no text joined on the way.
    void printLine(std::initializer_list<std::string_view> parts);
    // Print #n, a; b; ... with the line put together in the file's own buffer: `build`
    // appends the parts to the std::string it is given, so no part is a string of its own.
    // A part that fails leaves nothing of the line; a closed file then faults (52).
    template <class Build>
    void printBuilt(Build&& build) {
        const std::size_t mark = buffer_.size();
        try {
            build(buffer_);
        } catch (...) {
            buffer_.resize(mark);
            throw;
        }
        endBuilt(mark);
    }
    // Print #n, value: the value in its print form, then the line end.
    void printValue(const Variant& v);
    // Text with no line end (Print #n, text;).
    void write(std::string_view text);

    // Writes what is buffered and closes; closing a closed file does nothing.
    void close();

  private:
    void endBuilt(std::size_t mark);
    void flush();
    // Writes the buffer at the place reached; false when the disk takes less.
    bool put();

    int fd_ = -1;
    std::string buffer_;
    // A replaced file: its path, to keep its descriptor open at close during a run.
    std::string keepAs_;
    // The bytes written since the open; a kept descriptor rewritten in place puts the next
    // ones there, and cuts the file at close when it held more (its length then).
    long long written_ = 0;
    bool inPlace_ = false;
    long long keptSize_ = 0;
};

// A text file opened for input, read whole at open. Faults: an empty name is VbError
// 52, a missing folder 76, a missing file 53, a folder 75, a file open for output 55;
// reading past the end 62.
class TextFileReader {
  public:
    TextFileReader() = default;
    explicit TextFileReader(const std::string& path);
    ~TextFileReader();
    TextFileReader(const TextFileReader&) = delete;
    TextFileReader& operator=(const TextFileReader&) = delete;
    TextFileReader(TextFileReader&& other) noexcept;
    TextFileReader& operator=(TextFileReader&& other) noexcept;

    void open(const std::string& path);
    bool isOpen() const { return open_; }
    void close();

    bool eof() const { return pos_ >= data_.size(); }

    // Line Input #n: one line without its end; "\r\n", "\n" and a lone "\r" end a line.
    std::string lineInput();

    // Input #n: the next free-format value. Leading blanks and tabs are skipped; a value
    // that starts with a double quote runs to the closing quote (what follows it up to the
    // comma or line end is dropped); any other value ends at a comma or the line end and
    // loses its trailing blanks. An empty line is one empty value. The line end after the
    // last value of a line is consumed.
    std::string input();

  private:
    void requireMore() const;
    bool atLineEnd() const;
    void skipLineEnd();

    std::string data_;
    std::size_t pos_ = 0;
    std::pair<std::uint64_t, std::uint64_t> key_{};
    bool open_ = false;
};
