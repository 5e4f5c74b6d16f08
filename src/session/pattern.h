#pragma once

#include <string>
#include <string_view>
#include <vector>

// A pattern of a session script: `*` matches any run of characters (line ends too), every
// other character matches itself, case-sensitively, and the pattern always spans the whole
// text. A literal star is written `\*` in the script.
class Pattern {
  public:
    Pattern() = default;
    // From the inside of a quoted script string, escapes not yet read.
    static Pattern fromQuoted(std::string_view raw);
    // A text that must match exactly.
    static Pattern exact(std::string text);

    bool matches(std::string_view text) const;
    // The same pattern with every "$APP" replaced by `folder`.
    Pattern withApp(const std::string& folder) const;
    // The pattern as the script wrote it, quoted, for messages.
    const std::string& shown() const { return shown_; }

  private:
    // The literal pieces; between each two there is a star.
    std::vector<std::string> pieces_{std::string()};
    std::string shown_ = "\"\"";
};

// A text as a quoted, escaped script string, so that a message stays on one line.
std::string shownText(std::string_view text);
