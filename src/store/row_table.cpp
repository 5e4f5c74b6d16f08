#include "store/row_table.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "base/convert.h"
#include "base/dates.h"
#include "base/fold.h"
#include "base/strings.h"
#include "base/vb_error.h"

namespace {

bool isTextKind(ColumnKind k) {
    return k == ColumnKind::Text;
}

// The limits of what each kind holds, as the classic kinds do.
constexpr double kMoneyLimit = 922337203685477.5808;
constexpr double kLongMin = std::numeric_limits<std::int32_t>::min();
constexpr double kLongMax = std::numeric_limits<std::int32_t>::max();
constexpr double kWholeLimit = 9223372036854775808.0;  // 2^63

bool fitsKind(ColumnKind kind, double r) {
    switch (kind) {
        case ColumnKind::Money:
            return std::fabs(r) < kMoneyLimit;
        case ColumnKind::Long:
            return r >= kLongMin - 0.5 && r < kLongMax + 0.5;
        case ColumnKind::Counter:
        case ColumnKind::YesNo:
            return r >= -kWholeLimit && r < kWholeLimit;
        case ColumnKind::Double:
        case ColumnKind::Date:
            return std::isfinite(r);
        case ColumnKind::Text:
            return true;
    }
    return false;
}

[[noreturn]] void wrongType() {
    throw VbError(vberr::WrongType);
}

double strictNumber(const Variant& v) {
    try {
        return CDbl(v);
    } catch (const VbError&) {
        wrongType();
    }
}

}  // namespace

Variant coerceTo(ColumnKind kind, const Variant& v) {
    std::optional<Variant> fitted = fitTo(kind, v);
    if (!fitted) wrongType();
    return std::move(*fitted);
}

std::optional<Variant> fitTo(ColumnKind kind, const Variant& v) {
    if (v.IsNull() || v.IsEmpty()) return Variant::Null();
    // An emptied box clears a number, a date or a yes/no; a text keeps its "".
    if (v.IsString() && !isTextKind(kind) && Trim(v.Str()).empty()) return Variant::Null();
    switch (kind) {
        case ColumnKind::Text:
            return Variant(CStr(v));
        case ColumnKind::Counter:
            return std::nullopt;  // the store assigns the key
        case ColumnKind::Long: {
            double d = std::nearbyint(strictNumber(v));
            if (d < std::numeric_limits<std::int32_t>::min() ||
                d > std::numeric_limits<std::int32_t>::max())
                wrongType();
            return Variant::Long(static_cast<std::int32_t>(d));
        }
        case ColumnKind::Double:
            return Variant::Double(strictNumber(v));
        case ColumnKind::Money: {
            if (v.Type() == VarType::Currency) return v;
            double d = strictNumber(v);
            if (std::fabs(d) > 922337203685477.0) wrongType();
            return Variant::Currency(d);
        }
        case ColumnKind::YesNo: {
            if (v.IsString()) {
                std::string t = UCase(Trim(v.Str()));
                if (t == "TRUE" || t == "YES" || t == "ON") return Variant(true);
                if (t == "FALSE" || t == "NO" || t == "OFF") return Variant(false);
            }
            return Variant(strictNumber(v) != 0);
        }
        case ColumnKind::Date: {
            try {
                return Variant::Date(CDate(v));
            } catch (const VbError&) {
                wrongType();
            }
        }
    }
    wrongType();
}

RowTable::Block::Block() {
    std::fill(std::begin(nulls), std::end(nulls), ~std::uint64_t{0});
}

void RowTable::Column::put(int row, std::uint64_t bits, bool null) {
    // A Null written over a Null changes nothing, and leaves a shared block shared.
    if (null && bits == 0 && isNull(row) && cell(row) == 0) return;
    std::shared_ptr<Block>& block = blocks[row >> BlockShift];
    if (block.use_count() > 1) block = std::make_shared<Block>(*block);
    const int r = row & (BlockRows - 1);
    block->cells[r] = bits;
    const std::uint64_t bit = std::uint64_t{1} << (r & 63);
    if (null)
        block->nulls[r >> 6] |= bit;
    else
        block->nulls[r >> 6] &= ~bit;
}

const std::shared_ptr<RowTable::Block>& RowTable::nullBlock() {
    static const std::shared_ptr<Block> nulls = std::make_shared<Block>();
    return nulls;
}

RowTable::RowTable(std::vector<ColumnInfo> columns) {
    columns_.reserve(columns.size());
    for (auto& info : columns)
        columns_.push_back(std::make_shared<Column>(Column{std::move(info), {}, {}, {}}));
}

std::optional<RowTable> RowTable::reordered(const std::vector<ColumnInfo>& columns) const {
    if (columns.size() != columns_.size()) return std::nullopt;
    std::vector<int> kept;
    kept.reserve(rowids_.size());
    for (int row = 0; row < rowCount(); ++row) {
        if (deleted_[row]) continue;
        if (!kept.empty() && rowids_[row] <= rowids_[kept.back()]) return std::nullopt;
        kept.push_back(row);
    }
    const bool whole = kept.size() == rowids_.size();
    RowTable copy({});
    for (int row : kept)
        copy.appendRow(rowids_[row]);
    copy.columns_.reserve(columns.size());
    for (const auto& info : columns) {
        const int c = columnOf(info.name);
        if (c < 0 || columns_[c]->info.kind != info.kind) return std::nullopt;
        const Column& from = *columns_[c];
        if (whole) {
            // Shared until either table changes the column.
            copy.columns_.push_back(columns_[c]);
        } else {
            Column to{from.info, {}, from.arena, {}};  // the texts shared
            to.blocks.resize((kept.size() + BlockRows - 1) / BlockRows);
            for (auto& block : to.blocks)
                block = nullBlock();
            for (std::size_t i = 0; i < kept.size(); ++i) {
                const int row = kept[i];
                if (!from.overflowed.empty() && from.overflowed.count(row))
                    to.overflowed.insert(static_cast<int>(i));
                to.put(static_cast<int>(i), from.cell(row), from.isNull(row));
            }
            copy.columns_.push_back(std::make_shared<Column>(std::move(to)));
        }
    }
    return copy;
}

bool RowTable::holdsStored(int row, int c, const StoredValue& v) const {
    const Column& col = *columns_[c];
    // The usual case, a text kept as text, without reading the value into a cell.
    const bool overflowed = !col.overflowed.empty() && col.overflowed.count(row);
    if (col.info.kind == ColumnKind::Text && v.type == StoredValue::Type::Text)
        return !col.isNull(row) && !overflowed && text(row, c) == v.text;
    if (v.type == StoredValue::Type::Null) return col.isNull(row) && !overflowed;
    // The value read into a cell of one row of its own, made once and used again.
    thread_local Column read{{}, {std::make_shared<Block>()}, {}, {}};
    read.info = col.info;
    read.arena.clear();
    read.overflowed.clear();
    storeValue(read, 0, v);
    if (read.isNull(0) != col.isNull(row) || !read.overflowed.empty() != overflowed) return false;
    if (col.isNull(row)) return true;
    if (col.info.kind == ColumnKind::Text) {
        const std::uint64_t a = read.cell(0), b = col.cell(row);
        return read.textOf(a) == col.textOf(b);
    }
    return read.cell(0) == col.cell(row);
}

RowTable::Column& RowTable::own(int c) {
    if (columns_[c].use_count() > 1) columns_[c] = std::make_shared<Column>(*columns_[c]);
    return *columns_[c];
}

int RowTable::appendRow(std::int64_t rowid) {
    // A block's rows not added yet are Null already.
    if (rows_ % BlockRows == 0)
        for (int c = 0; c < columnCount(); ++c)
            own(c).blocks.push_back(nullBlock());
    rowids_.push_back(rowid);
    deleted_.push_back(false);
    return rows_++;
}

void RowTable::setText(Column& col, int row, std::string_view s) {
    // A piece takes texts up to its size; a longer text has a piece of its own.
    constexpr std::size_t PieceBytes = 1 << 16;
    if (s.size() > std::numeric_limits<std::uint32_t>::max()) throw VbError(7, "Out of memory");
    if (col.arena.empty() || col.arena.back()->size() + s.size() > PieceBytes) {
        if (col.arena.size() > 0xffff) throw VbError(7, "Out of memory");
        col.arena.push_back(std::make_shared<std::string>());
        // The first piece grows with what it holds, so that a small table stays small.
        if (col.arena.size() > 1) col.arena.back()->reserve(std::max(PieceBytes, s.size()));
    }
    std::string& piece = *col.arena.back();
    const std::uint64_t at = (col.arena.size() - 1) << 16 | piece.size();
    piece.append(s);
    col.put(row, at << 32 | static_cast<std::uint32_t>(s.size()), false);
}

std::string_view RowTable::text(int row, int c) const {
    const Column& col = *columns_[c];
    if (col.isNull(row)) return {};
    return col.textOf(col.cell(row));
}

double RowTable::number(int row, int c) const {
    const Column& col = *columns_[c];
    std::uint64_t cell = col.cell(row);
    switch (col.info.kind) {
        case ColumnKind::Money:
            return static_cast<double>(static_cast<std::int64_t>(cell)) / 10000.0;
        case ColumnKind::Counter:
        case ColumnKind::Long:
        case ColumnKind::YesNo:
            return static_cast<double>(static_cast<std::int64_t>(cell));
        case ColumnKind::Double:
        case ColumnKind::Date:
            return std::bit_cast<double>(cell);
        case ColumnKind::Text:
            return Val(text(row, c));
    }
    return 0;
}

Variant RowTable::get(int row, int c) const {
    const Column& col = *columns_[c];
    if (col.isNull(row)) return Variant::Null();
    if (!col.overflowed.empty() && col.overflowed.count(row)) throw VbError(vberr::Overflow);
    std::uint64_t cell = col.cell(row);
    auto whole = static_cast<std::int64_t>(cell);
    switch (col.info.kind) {
        case ColumnKind::Text:
            return Variant(text(row, c));
        case ColumnKind::Money:
            return Variant::CurrencyFromScaled(whole);
        case ColumnKind::YesNo:
            return Variant(whole != 0);
        case ColumnKind::Counter:
        case ColumnKind::Long:
            if (whole < std::numeric_limits<std::int32_t>::min() ||
                whole > std::numeric_limits<std::int32_t>::max())
                return Variant::Double(static_cast<double>(whole));
            return Variant::Long(static_cast<std::int32_t>(whole));
        case ColumnKind::Double:
            return Variant::Double(std::bit_cast<double>(cell));
        case ColumnKind::Date:
            return Variant::Date(std::bit_cast<double>(cell));
    }
    return Variant::Null();
}

void RowTable::set(int row, int c, const Variant& v) {
    Column& col = own(c);
    if (!col.overflowed.empty()) col.overflowed.erase(row);
    if (v.IsNull() || v.IsEmpty()) return col.put(row, 0, true);
    switch (col.info.kind) {
        case ColumnKind::Text:
            return setText(col, row, v.Str());
        case ColumnKind::Money:
            return setWhole(col, row, v.CurrencyScaled());
        case ColumnKind::YesNo:
            return setWhole(col, row, v.BoolValue() ? -1 : 0);
        case ColumnKind::Counter:
        case ColumnKind::Long:
            return setWhole(col, row, static_cast<std::int64_t>(v.Number()));
        case ColumnKind::Double:
        case ColumnKind::Date:
            return col.put(row, std::bit_cast<std::uint64_t>(v.Number()), false);
    }
}

int RowTable::columnOf(std::string_view name) const {
    for (int c = 0; c < columnCount(); ++c)
        if (equalFolded(columns_[c]->info.name, name)) return c;
    return -1;
}

void RowTable::reserve(std::size_t rows) {
    rowids_.reserve(rows);
    deleted_.reserve(rows);
    for (int c = 0; c < columnCount(); ++c)
        own(c).blocks.reserve((rows + BlockRows - 1) / BlockRows);
}

void RowTable::shrink() {
    for (int c = 0; c < columnCount(); ++c)
        if (!columns_[c]->arena.empty()) columns_[c]->arena.back()->shrink_to_fit();
}

void RowTable::setStored(int row, int c, const StoredValue& v) {
    storeValue(own(c), row, v);
}

void RowTable::setStoredInteger(int row, int c, std::int64_t i) {
    storeInteger(own(c), row, i);
}

void RowTable::setStoredReal(int row, int c, double r) {
    storeReal(own(c), row, r);
}

void RowTable::setStoredText(int row, int c, std::string_view text) {
    storeText(own(c), row, text);
}

void RowTable::storeValue(Column& col, int row, const StoredValue& v) {
    switch (v.type) {
        case StoredValue::Type::Null:
            if (!col.overflowed.empty()) col.overflowed.erase(row);
            return col.put(row, 0, true);
        case StoredValue::Type::Integer:
            return storeInteger(col, row, v.i);
        case StoredValue::Type::Real:
            return storeReal(col, row, v.r);
        case StoredValue::Type::Text:
            return storeText(col, row, v.text);
    }
}

void RowTable::setOverflowed(Column& col, int row, bool negative) {
    if (col.info.kind == ColumnKind::Double || col.info.kind == ColumnKind::Date) {
        const double limit = std::numeric_limits<double>::max();
        col.put(row, std::bit_cast<std::uint64_t>(negative ? -limit : limit), false);
    } else {
        const std::int64_t limit = std::numeric_limits<std::int64_t>::max();
        col.put(row, static_cast<std::uint64_t>(negative ? -limit : limit), false);
    }
    col.overflowed.insert(row);
}

void RowTable::setWhole(Column& col, int row, std::int64_t value) {
    col.put(row, static_cast<std::uint64_t>(value), false);
}

void RowTable::storeInteger(Column& col, int row, std::int64_t i) {
    const auto r = static_cast<double>(i);
    switch (col.info.kind) {
        case ColumnKind::Text:
            setText(col, row, CStr(Variant::Double(r)));
            return;
        case ColumnKind::Money:
            if (!fitsKind(col.info.kind, r)) return setOverflowed(col, row, i < 0);
            return setWhole(col, row, i * 10000);
        case ColumnKind::Long:
            if (!fitsKind(col.info.kind, r)) return setOverflowed(col, row, i < 0);
            return setWhole(col, row, i);
        case ColumnKind::Double:
        case ColumnKind::Date:
            return col.put(row, std::bit_cast<std::uint64_t>(r), false);
        case ColumnKind::Counter:
        case ColumnKind::YesNo:
            return setWhole(col, row, i);
    }
}

void RowTable::storeReal(Column& col, int row, double r) {
    if (col.info.kind == ColumnKind::Text) return setText(col, row, CStr(Variant::Double(r)));
    if (!fitsKind(col.info.kind, r)) return setOverflowed(col, row, r < 0);
    switch (col.info.kind) {
        // Money is kept as a real in units; in memory it is whole ten-thousandths.
        case ColumnKind::Money:
            return setWhole(col, row, static_cast<std::int64_t>(std::nearbyint(r * 10000.0)));
        case ColumnKind::Double:
        case ColumnKind::Date:
            return col.put(row, std::bit_cast<std::uint64_t>(r), false);
        default:
            return setWhole(col, row, static_cast<std::int64_t>(std::nearbyint(r)));
    }
}

void RowTable::storeText(Column& col, int row, std::string_view text) {
    if (col.info.kind == ColumnKind::Text) return setText(col, row, text);
    double r = 0;
    try {
        r = Val(text);
    } catch (const VbError&) {
        return setOverflowed(col, row, text.find('-') != std::string_view::npos);
    }
    storeReal(col, row, r);
}

StoredValue toStored(ColumnKind kind, const Variant& v) {
    StoredValue s;
    if (v.IsNull() || v.IsEmpty()) return s;
    switch (kind) {
        case ColumnKind::Text:
            s.type = StoredValue::Type::Text;
            s.text = v.Str();
            break;
        case ColumnKind::Counter:
        case ColumnKind::Long:
        case ColumnKind::YesNo:
            s.type = StoredValue::Type::Integer;
            s.i = static_cast<std::int64_t>(v.Number());
            break;
        case ColumnKind::Money:
        case ColumnKind::Double:
        case ColumnKind::Date:
            s.type = StoredValue::Type::Real;
            s.r = v.Number();
            break;
    }
    return s;
}

std::size_t RowTable::memoryBytes() const {
    std::size_t total = rowids_.capacity() * sizeof(std::int64_t) + deleted_.capacity() / 8;
    for (const auto& shared : columns_) {
        const Column& col = *shared;
        // A block shared with another table counts in both.
        for (const auto& block : col.blocks)
            total += block == nullBlock() ? 0 : sizeof(Block);
        for (const auto& piece : col.arena)
            total += piece->capacity();
    }
    return total;
}
