#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/fold.h"
#include "base/variant.h"
#include "store/row_table.h"

// A criteria text of the store's dialect ("[StockNo] like '*AB*' and Cost1 > 5"), parsed
// once into a tree and then evaluated row by row in memory. Names are bound to the
// columns of one table; text compares ignoring case; "= Null" and "<> Null" test for a
// missing value. A text that does not parse fails with 3001, an unknown name with 3265.
class Criteria {
  public:
    static Criteria parse(std::string_view text, const RowTable& table);

    bool matches(const RowTable& table, int row) const;
    // True when the whole text is one comparison, as Find requires.
    bool isSingleCondition() const;
    // When the text is "column = value" with a value that is not Null: the column and the
    // value made to fit it, for finding through an index.
    bool isColumnEquals(int& column, Variant& value) const;

    struct Node;
    Criteria(Criteria&&) noexcept;
    Criteria& operator=(Criteria&&) noexcept;
    ~Criteria();

  private:
    explicit Criteria(std::unique_ptr<Node> root);
    std::unique_ptr<Node> root_;
};

// The words of the dialect and of select texts.
struct Token {
    enum class Kind { Name, Text, Number, Date, Symbol, End } kind = Kind::End;
    std::string text;  // the name without brackets, the text without quotes, the symbol
    bool bracketed = false;
};
// Splits a text into tokens; an unclosed quote or bracket fails with `errorNumber`.
std::vector<Token> tokenize(std::string_view text, int errorNumber);
