#include "store/statement.h"

#include <cctype>

#include "base/strings.h"
#include "base/vb_error.h"
#include "store/criteria.h"

namespace {

// The position of a keyword outside quotes and brackets, as a whole word; npos if none.
std::size_t findKeyword(std::string_view text, std::string_view word, std::size_t from = 0) {
    char quote = 0;
    bool bracket = false;
    auto isWordChar = [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
    };
    for (std::size_t i = from; i < text.size(); ++i) {
        char c = text[i];
        if (quote) {
            if (c == quote) quote = 0;
            continue;
        }
        if (bracket) {
            if (c == ']') bracket = false;
            continue;
        }
        if (c == '\'' || c == '"') {
            quote = c;
            continue;
        }
        if (c == '[') {
            bracket = true;
            continue;
        }
        if (i + word.size() > text.size()) break;
        if ((i > 0 && isWordChar(text[i - 1])) ||
            compareFolded(text.substr(i, word.size()), word) != 0)
            continue;
        std::size_t end = i + word.size();
        if (end < text.size() && isWordChar(text[end])) continue;
        return i;
    }
    return std::string_view::npos;
}

// "ORDER  BY" with any blanks between the two words.
std::size_t findOrderBy(std::string_view text, std::size_t& after) {
    std::size_t at = 0;
    while ((at = findKeyword(text, "order", at)) != std::string_view::npos) {
        std::size_t i = at + 5;
        while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i])))
            ++i;
        if (findKeyword(text, "by", i) == i) {
            after = i + 2;
            return at;
        }
        at += 5;
    }
    return std::string_view::npos;
}

std::string nameOf(std::string_view text, int errorNumber) {
    auto tokens = tokenize(text, errorNumber);
    if (tokens.size() != 2 || tokens[0].kind != Token::Kind::Name) throw VbError(errorNumber);
    return tokens[0].text;
}

}  // namespace

SelectStatement parseSelect(std::string_view text, int errorNumber) {
    SelectStatement st;
    std::string_view trimmed = text;
    while (!trimmed.empty() && std::isspace(static_cast<unsigned char>(trimmed.front())))
        trimmed.remove_prefix(1);
    if (findKeyword(trimmed, "select") != 0) {
        st.table = nameOf(trimmed, errorNumber);
        return st;
    }
    std::size_t from = findKeyword(trimmed, "from");
    if (from == std::string_view::npos) throw VbError(errorNumber);
    std::string_view list = trimmed.substr(6, from - 6);
    std::size_t afterOrder = 0;
    std::size_t where = findKeyword(trimmed, "where", from);
    std::size_t order = findOrderBy(trimmed, afterOrder);
    std::size_t tableEnd = std::min(where, order);
    st.table =
        nameOf(trimmed.substr(from + 4, tableEnd == std::string_view::npos ? std::string_view::npos
                                                                           : tableEnd - from - 4),
               errorNumber);
    if (where != std::string_view::npos) {
        std::size_t end = order == std::string_view::npos || order < where ? trimmed.size() : order;
        st.where = Trim(std::string(trimmed.substr(where + 5, end - where - 5)));
    }
    if (order != std::string_view::npos) st.orderBy = Trim(std::string(trimmed.substr(afterOrder)));

    auto tokens = tokenize(list, errorNumber);
    if (tokens.size() == 2 && tokens[0].kind == Token::Kind::Symbol && tokens[0].text == "*")
        return st;
    bool expectName = true;
    for (const auto& t : tokens) {
        if (t.kind == Token::Kind::End) break;
        if (expectName && t.kind == Token::Kind::Name) {
            st.columns.push_back(t.text);
        } else if (!expectName && t.kind == Token::Kind::Symbol && t.text == ",") {
        } else {
            throw VbError(errorNumber);
        }
        expectName = !expectName;
    }
    if (st.columns.empty() || expectName) throw VbError(errorNumber);
    return st;
}

std::vector<SortKey> parseSortList(std::string_view text, const RowTable& table) {
    std::vector<SortKey> keys;
    auto tokens = tokenize(text, vberr::BadArguments);
    std::size_t i = 0;
    while (tokens[i].kind != Token::Kind::End) {
        if (tokens[i].kind != Token::Kind::Name) throw VbError(vberr::BadArguments);
        SortKey key;
        key.column = -1;
        for (int c = 0; c < table.columnCount(); ++c)
            if (compareFolded(table.column(c).name, tokens[i].text) == 0) key.column = c;
        if (key.column < 0) throw VbError(vberr::ItemNotFound);
        ++i;
        if (tokens[i].kind == Token::Kind::Name && !tokens[i].bracketed) {
            std::string word = UCase(tokens[i].text);
            if (word != "DESC" && word != "ASC") throw VbError(vberr::BadArguments);
            key.descending = word == "DESC";
            ++i;
        }
        keys.push_back(key);
        if (tokens[i].kind == Token::Kind::Symbol && tokens[i].text == ",") {
            ++i;
            if (tokens[i].kind == Token::Kind::End) throw VbError(vberr::BadArguments);
        } else if (tokens[i].kind != Token::Kind::End) {
            throw VbError(vberr::BadArguments);
        }
    }
    return keys;
}
