#include "store/criteria.h"

#include <algorithm>
#include <cctype>
#include <optional>

#include "base/convert.h"
#include "base/dates.h"
#include "base/strings.h"
#include "base/vb_error.h"

namespace {

[[noreturn]] void syntaxError() {
    throw VbError(vberr::BadArguments);
}

bool isNameChar(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.' ||
           static_cast<unsigned char>(c) >= 0x80;
}

}  // namespace

std::vector<Token> tokenize(std::string_view text, int errorNumber) {
    std::vector<Token> tokens;
    std::size_t i = 0;
    auto fail = [&]() { throw VbError(errorNumber); };
    while (i < text.size()) {
        char c = text[i];
        if (std::isspace(static_cast<unsigned char>(c))) {
            ++i;
            continue;
        }
        Token t;
        if (c == '\'' || c == '"') {
            // A doubled quote inside stands for one; a lone one ends the text.
            t.kind = Token::Kind::Text;
            ++i;
            for (;;) {
                if (i >= text.size()) fail();
                if (text[i] == c) {
                    if (i + 1 < text.size() && text[i + 1] == c) {
                        t.text += c;
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                t.text += text[i++];
            }
        } else if (c == '[') {
            std::size_t close = text.find(']', i);
            if (close == std::string_view::npos) fail();
            t.kind = Token::Kind::Name;
            t.bracketed = true;
            t.text = std::string(text.substr(i + 1, close - i - 1));
            i = close + 1;
        } else if (c == '#') {
            std::size_t close = text.find('#', i + 1);
            if (close == std::string_view::npos) fail();
            t.kind = Token::Kind::Date;
            t.text = std::string(text.substr(i + 1, close - i - 1));
            i = close + 1;
        } else if (std::isdigit(static_cast<unsigned char>(c)) ||
                   (c == '.' && i + 1 < text.size() &&
                    std::isdigit(static_cast<unsigned char>(text[i + 1])))) {
            t.kind = Token::Kind::Number;
            std::size_t start = i;
            while (i < text.size() &&
                   (std::isdigit(static_cast<unsigned char>(text[i])) || text[i] == '.'))
                ++i;
            if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
                ++i;
                if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
                while (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])))
                    ++i;
            }
            t.text = std::string(text.substr(start, i - start));
        } else if (isNameChar(c)) {
            t.kind = Token::Kind::Name;
            std::size_t start = i;
            while (i < text.size() && isNameChar(text[i]))
                ++i;
            t.text = std::string(text.substr(start, i - start));
        } else {
            t.kind = Token::Kind::Symbol;
            std::string_view two = text.substr(i, 2);
            if (two == "<>" || two == "<=" || two == ">=" || two == "!=") {
                t.text = std::string(two);
                i += 2;
            } else if (c == '=' || c == '<' || c == '>' || c == '(' || c == ')' || c == ',' ||
                       c == '*' || c == '-' || c == '+') {
                t.text = std::string(1, c);
                ++i;
            } else {
                fail();
            }
        }
        tokens.push_back(std::move(t));
    }
    tokens.push_back(Token{});
    return tokens;
}

struct Criteria::Node {
    enum class Op { And, Or, Not, Eq, Ne, Lt, Gt, Le, Ge, Like, IsNull, IsNotNull, Constant };
    Op op = Op::Constant;
    // And, Or: every term of the chain, so that a long chain is one flat node; Not: one.
    std::vector<std::unique_ptr<Node>> terms;
    // A comparison: a column on the left, and either a value or a second column.
    int column = -1;
    int otherColumn = -1;
    Variant value;
    double number = 0;   // the value as a number, for number columns
    std::string folded;  // the value as folded text, for text columns
    std::optional<LikePattern> like;
    bool constant = false;  // Constant: the comparison's fixed result
};

namespace {

using Node = Criteria::Node;
using Op = Node::Op;

bool isNumberColumn(ColumnKind k) {
    return k != ColumnKind::Text;
}

bool comparison(std::string_view symbol, Op& op) {
    static constexpr std::pair<std::string_view, Op> ops[] = {
        {"=", Op::Eq}, {"<>", Op::Ne}, {"!=", Op::Ne}, {"<", Op::Lt},
        {">", Op::Gt}, {"<=", Op::Le}, {">=", Op::Ge}};
    for (const auto& [text, o] : ops)
        if (text == symbol) {
            op = o;
            return true;
        }
    return false;
}

class Parser {
  public:
    Parser(std::vector<Token> tokens, const RowTable& table)
        : t_(std::move(tokens)), table_(table) {}

    std::unique_ptr<Node> parseAll() {
        auto node = parseOr();
        if (peek().kind != Token::Kind::End) syntaxError();
        return node;
    }

  private:
    const Token& peek() const { return t_[pos_]; }
    Token take() { return t_[pos_ < t_.size() - 1 ? pos_++ : pos_]; }
    bool isWord(std::string_view word) const {
        return peek().kind == Token::Kind::Name && !peek().bracketed &&
               equalFolded(peek().text, word);
    }
    bool isSymbol(const char* s) const {
        return peek().kind == Token::Kind::Symbol && peek().text == s;
    }

    std::unique_ptr<Node> chain(Op op, std::vector<std::unique_ptr<Node>> terms) {
        if (terms.size() == 1) return std::move(terms.front());
        auto n = std::make_unique<Node>();
        n->op = op;
        n->terms = std::move(terms);
        return n;
    }

    std::unique_ptr<Node> parseOr() {
        std::vector<std::unique_ptr<Node>> terms;
        terms.push_back(parseAnd());
        while (isWord("OR")) {
            take();
            terms.push_back(parseAnd());
        }
        return chain(Op::Or, std::move(terms));
    }

    std::unique_ptr<Node> parseAnd() {
        std::vector<std::unique_ptr<Node>> terms;
        terms.push_back(parseNot());
        while (isWord("AND")) {
            take();
            terms.push_back(parseNot());
        }
        return chain(Op::And, std::move(terms));
    }

    // Any run of "not" is read in a loop, and only parentheses nest, up to a limit: a text
    // of any length is parsed and evaluated without running out of stack.
    std::unique_ptr<Node> parseNot() {
        bool negated = false;
        while (isWord("NOT")) {
            take();
            negated = !negated;
        }
        std::unique_ptr<Node> node;
        if (isSymbol("(")) {
            take();
            if (++depth_ > MaxNesting) throw VbError(vberr::QueryTooComplex);
            node = parseOr();
            --depth_;
            if (!isSymbol(")")) syntaxError();
            take();
        } else {
            node = parseComparison();
        }
        return wrapNot(std::move(node), negated);
    }

    // An operand: a column (its index) or a value.
    struct Operand {
        int column = -1;
        Variant value;
    };

    Operand parseOperand() {
        Operand o;
        bool negative = false;
        if (isSymbol("-") || isSymbol("+")) negative = take().text == "-";
        Token tok = take();
        switch (tok.kind) {
            case Token::Kind::Text:
                o.value = Variant(tok.text);
                break;
            case Token::Kind::Number:
                o.value = Variant::Double(Val(tok.text) * (negative ? -1 : 1));
                break;
            case Token::Kind::Date: {
                double serial = 0;
                if (!parseDate(tok.text, serial)) syntaxError();
                o.value = Variant::Date(serial);
                break;
            }
            case Token::Kind::Name: {
                std::string word = UCase(tok.text);
                if (!tok.bracketed && (word == "AND" || word == "OR" || word == "NOT" ||
                                       word == "LIKE" || word == "IS"))
                    syntaxError();
                if (!tok.bracketed && word == "NULL") {
                    o.value = Variant::Null();
                } else if (!tok.bracketed && (word == "TRUE" || word == "YES")) {
                    o.value = Variant(true);
                } else if (!tok.bracketed && (word == "FALSE" || word == "NO")) {
                    o.value = Variant(false);
                } else {
                    o.column = columnOf(tok.text);
                }
                break;
            }
            default:
                syntaxError();
        }
        return o;
    }

    int columnOf(const std::string& name) const {
        int c = table_.columnOf(name);
        if (c < 0) throw VbError(vberr::ItemNotFound);
        return c;
    }

    std::unique_ptr<Node> parseComparison() {
        Operand a = parseOperand();
        auto node = std::make_unique<Node>();
        if (isWord("IS")) {
            take();
            bool negated = false;
            if (isWord("NOT")) {
                take();
                negated = true;
            }
            if (!isWord("NULL")) syntaxError();
            take();
            if (a.column < 0) syntaxError();
            node->op = negated ? Op::IsNotNull : Op::IsNull;
            node->column = a.column;
            return node;
        }
        bool notLike = false;
        if (isWord("NOT")) {
            take();
            notLike = true;
            if (!isWord("LIKE")) syntaxError();
        }
        Op op;
        if (isWord("LIKE")) {
            take();
            op = Op::Like;
        } else if (peek().kind == Token::Kind::Symbol && comparison(peek().text, op)) {
            take();
        } else {
            syntaxError();
        }
        Operand b = parseOperand();
        // A value on the left and a column on the right reads the other way round.
        if (a.column < 0 && b.column >= 0) {
            std::swap(a, b);
            if (op == Op::Lt)
                op = Op::Gt;
            else if (op == Op::Gt)
                op = Op::Lt;
            else if (op == Op::Le)
                op = Op::Ge;
            else if (op == Op::Ge)
                op = Op::Le;
        }
        node->op = op;
        if (a.column < 0) {
            // Two values: settle the result now.
            node->op = Op::Constant;
            node->constant = false;
            if (!a.value.IsNull() && !b.value.IsNull() && op == Op::Eq)
                node->constant = compareFolded(CStr(a.value), CStr(b.value)) == 0;
            return wrapNot(std::move(node), notLike);
        }
        node->column = a.column;
        if (b.column >= 0) {
            node->otherColumn = b.column;
            return wrapNot(std::move(node), notLike);
        }
        bindValue(*node, b.value);
        return wrapNot(std::move(node), notLike);
    }

    std::unique_ptr<Node> wrapNot(std::unique_ptr<Node> node, bool negate) {
        if (!negate) return node;
        auto n = std::make_unique<Node>();
        n->op = Op::Not;
        n->terms.push_back(std::move(node));
        return n;
    }

    void bindValue(Node& node, const Variant& value) {
        if (value.IsNull()) {
            // "= Null" and "<> Null" are the dialect's tests for a missing value, and so is
            // "like Null", which the search form writes for its empty values.
            if (node.op == Op::Eq || node.op == Op::Like)
                node.op = Op::IsNull;
            else if (node.op == Op::Ne)
                node.op = Op::IsNotNull;
            else {
                node.op = Op::Constant;
                node.constant = false;
            }
            return;
        }
        node.value = value;
        ColumnKind kind = table_.column(node.column).kind;
        if (node.op == Op::Like) {
            try {
                node.like.emplace(CStr(value));
            } catch (const VbError&) {
                throw VbError(vberr::BadArguments);
            }
            return;
        }
        if (!isNumberColumn(kind)) {
            node.folded = foldCase(CStr(value));
            return;
        }
        // A quoted number against a number column compares as a number.
        try {
            node.number = kind == ColumnKind::Date ? CDate(value) : CDbl(value);
        } catch (const VbError&) {
            throw VbError(vberr::BadArguments);
        }
    }

    static constexpr int MaxNesting = 200;

    std::vector<Token> t_;
    std::size_t pos_ = 0;
    int depth_ = 0;
    const RowTable& table_;
};

// A cell as text: a text cell as it stands, any other in its text form (for like).
std::string cellText(const RowTable& t, int row, int c) {
    if (!isNumberColumn(t.column(c).kind)) return std::string(t.text(row, c));
    return CStr(t.get(row, c));
}

// A text cell read against a number column, as a quoted value there is read: a date for
// a date column, a number for the others; a text that is neither is the dialect's type
// fault, never a silent "".
double cellAsNumberOf(const RowTable& t, int row, int textColumn, ColumnKind kind) {
    Variant text(t.text(row, textColumn));
    try {
        return kind == ColumnKind::Date ? CDate(text) : CDbl(text);
    } catch (const VbError&) {
        throw VbError(vberr::BadArguments);
    }
}

// One column like another: a pattern from a cell that is no pattern is refused as a
// literal one is.
bool likeColumns(const RowTable& t, int row, int text, int pattern) {
    try {
        return likeMatch(cellText(t, row, text), cellText(t, row, pattern));
    } catch (const VbError& e) {
        if (e.Number() == vberr::Overflow) throw;
        throw VbError(vberr::BadArguments);
    }
}

int compareNumbers(double x, double y) {
    return x < y ? -1 : (x > y ? 1 : 0);
}

int compareCells(const RowTable& t, int row, int a, int b) {
    const ColumnKind ka = t.column(a).kind, kb = t.column(b).kind;
    if (!isNumberColumn(ka) && !isNumberColumn(kb))
        return compareFolded(t.text(row, a), t.text(row, b));
    double x = isNumberColumn(ka) ? t.number(row, a) : cellAsNumberOf(t, row, a, kb);
    double y = isNumberColumn(kb) ? t.number(row, b) : cellAsNumberOf(t, row, b, ka);
    return compareNumbers(x, y);
}

bool holds(Op op, int cmp) {
    switch (op) {
        case Op::Eq:
            return cmp == 0;
        case Op::Ne:
            return cmp != 0;
        case Op::Lt:
            return cmp < 0;
        case Op::Gt:
            return cmp > 0;
        case Op::Le:
            return cmp <= 0;
        case Op::Ge:
            return cmp >= 0;
        default:
            return false;
    }
}

bool evaluate(const Node& n, const RowTable& t, int row) {
    switch (n.op) {
        case Op::And:
            return std::all_of(n.terms.begin(), n.terms.end(),
                               [&](const auto& term) { return evaluate(*term, t, row); });
        case Op::Or:
            return std::any_of(n.terms.begin(), n.terms.end(),
                               [&](const auto& term) { return evaluate(*term, t, row); });
        case Op::Not:
            return !evaluate(*n.terms.front(), t, row);
        case Op::Constant:
            return n.constant;
        case Op::IsNull:
            return t.isNull(row, n.column);
        case Op::IsNotNull:
            return !t.isNull(row, n.column);
        default:
            break;
    }
    if (t.isNull(row, n.column)) return false;
    if (n.otherColumn >= 0) {
        if (t.isNull(row, n.otherColumn)) return false;
        if (n.op == Op::Like) return likeColumns(t, row, n.column, n.otherColumn);
        return holds(n.op, compareCells(t, row, n.column, n.otherColumn));
    }
    if (n.op == Op::Like) {
        if (!isNumberColumn(t.column(n.column).kind)) return n.like->matches(t.text(row, n.column));
        return n.like->matches(cellText(t, row, n.column));
    }
    if (isNumberColumn(t.column(n.column).kind))
        return holds(n.op, compareNumbers(t.number(row, n.column), n.number));
    return holds(n.op, compareFolded(t.text(row, n.column), n.folded));
}

}  // namespace

Criteria::Criteria(std::unique_ptr<Node> root) : root_(std::move(root)) {}
Criteria::Criteria(Criteria&&) noexcept = default;
Criteria& Criteria::operator=(Criteria&&) noexcept = default;
Criteria::~Criteria() = default;

Criteria Criteria::parse(std::string_view text, const RowTable& table) {
    Parser parser(tokenize(text, vberr::BadArguments), table);
    return Criteria(parser.parseAll());
}

bool Criteria::matches(const RowTable& table, int row) const {
    return evaluate(*root_, table, row);
}

bool Criteria::isSingleCondition() const {
    return root_->op != Op::And && root_->op != Op::Or;
}

bool Criteria::isColumnEquals(int& column, Variant& value) const {
    if (root_->op != Op::Eq || root_->otherColumn >= 0) return false;
    column = root_->column;
    value = root_->value;
    return true;
}
