#include "session/pattern.h"

#include "session/script.h"

Pattern Pattern::fromQuoted(std::string_view raw) {
    Pattern p;
    p.pieces_.assign(1, std::string());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        char c = raw[i];
        if (c == '*') {
            p.pieces_.emplace_back();
        } else if (c == '\\' && i + 1 < raw.size()) {
            char e = raw[++i];
            p.pieces_.back() += unescape(e);
        } else {
            p.pieces_.back() += c;
        }
    }
    p.shown_ = "\"" + std::string(raw) + "\"";
    return p;
}

Pattern Pattern::exact(std::string text) {
    Pattern p;
    p.shown_ = shownText(text);
    p.pieces_.assign(1, std::move(text));
    return p;
}

bool Pattern::matches(std::string_view text) const {
    const std::string& first = pieces_.front();
    if (pieces_.size() == 1) return text == first;
    const std::string& last = pieces_.back();
    if (text.size() < first.size() + last.size()) return false;
    if (text.substr(0, first.size()) != first) return false;
    if (text.substr(text.size() - last.size()) != last) return false;
    // The middle pieces, each at its leftmost place: with stars only, that never loses a
    // match that exists.
    std::size_t at = first.size();
    const std::size_t end = text.size() - last.size();
    for (std::size_t i = 1; i + 1 < pieces_.size(); ++i) {
        const std::string& piece = pieces_[i];
        if (piece.empty()) continue;
        std::size_t found = text.substr(0, end).find(piece, at);
        if (found == std::string_view::npos) return false;
        at = found + piece.size();
    }
    return true;
}

Pattern Pattern::withApp(const std::string& folder) const {
    Pattern p = *this;
    for (auto& piece : p.pieces_)
        piece = replaceApp(piece, folder);
    return p;
}

std::string shownText(std::string_view text) {
    std::string out = "\"";
    for (char c : text) {
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                out += c;
        }
    }
    return out + "\"";
}
