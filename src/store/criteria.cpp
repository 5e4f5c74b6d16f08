#include "store/criteria.h"

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
    std::unique_ptr<Node> left, right;  // And, Or, Not
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

    std::unique_ptr<Node> join(Op op, std::unique_ptr<Node> l, std::unique_ptr<Node> r) {
        auto n = std::make_unique<Node>();
        n->op = op;
        n->left = std::move(l);
        n->right = std::move(r);
        return n;
    }

    std::unique_ptr<Node> parseOr() {
        auto node = parseAnd();
        while (isWord("OR")) {
            take();
            node = join(Op::Or, std::move(node), parseAnd());
        }
        return node;
    }

    std::unique_ptr<Node> parseAnd() {
        auto node = parseNot();
        while (isWord("AND")) {
            take();
            node = join(Op::And, std::move(node), parseNot());
        }
        return node;
    }

    std::unique_ptr<Node> parseNot() {
        if (isWord("NOT")) {
            take();
            return join(Op::Not, parseNot(), nullptr);
        }
        if (isSymbol("(")) {
            take();
            auto node = parseOr();
            if (!isSymbol(")")) syntaxError();
            take();
            return node;
        }
        return parseComparison();
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
        return negate ? join(Op::Not, std::move(node), nullptr) : std::move(node);
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

    std::vector<Token> t_;
    std::size_t pos_ = 0;
    const RowTable& table_;
};

int compareCells(const RowTable& t, int row, int a, int b) {
    if (isNumberColumn(t.column(a).kind) && isNumberColumn(t.column(b).kind)) {
        double x = t.number(row, a), y = t.number(row, b);
        return x < y ? -1 : (x > y ? 1 : 0);
    }
    return compareFolded(t.text(row, a), t.text(row, b));
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
            return evaluate(*n.left, t, row) && evaluate(*n.right, t, row);
        case Op::Or:
            return evaluate(*n.left, t, row) || evaluate(*n.right, t, row);
        case Op::Not:
            return !evaluate(*n.left, t, row);
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
        if (n.op == Op::Like) return likeMatch(t.text(row, n.column), t.text(row, n.otherColumn));
        return holds(n.op, compareCells(t, row, n.column, n.otherColumn));
    }
    if (n.op == Op::Like) {
        if (t.column(n.column).kind == ColumnKind::Text)
            return n.like->matches(t.text(row, n.column));
        return n.like->matches(CStr(t.get(row, n.column)));
    }
    if (isNumberColumn(t.column(n.column).kind)) {
        double x = t.number(row, n.column);
        return holds(n.op, x < n.number ? -1 : (x > n.number ? 1 : 0));
    }
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
