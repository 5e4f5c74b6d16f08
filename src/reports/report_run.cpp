#include "reports/report_run.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <unordered_map>

#include "base/clock.h"
#include "base/convert.h"
#include "base/dates.h"
#include "base/fold.h"
#include "base/format.h"
#include "base/strings.h"
#include "base/vb_error.h"
#include "records/store.h"

namespace {

using Row = std::vector<Variant>;

std::string selectAll(const std::string& table, const std::string& where = "") {
    return "select * from [" + table + "]" + (where.empty() ? "" : " where " + where);
}

// A value as a number for sorting: the number kinds, a date, or a text that is a number.
bool numberFor(const Variant& v, double& n) {
    if (v.IsNumberKind()) {
        n = v.Number();
        return true;
    }
    return v.IsString() && strictNumber(v.Str(), n);
}

bool isNothing(const Variant& v) {
    return v.IsNull() || v.IsEmpty() || (v.IsString() && v.Str().empty());
}

// Nothing first (no value or an empty text), then numbers by value (page "2" before page
// "10"), then text ignoring case.
int compareValues(const Variant& a, const Variant& b) {
    const bool noA = isNothing(a), noB = isNothing(b);
    if (noA || noB) return noA == noB ? 0 : (noA ? -1 : 1);
    double x = 0, y = 0;
    if (numberFor(a, x) && numberFor(b, y)) return x < y ? -1 : (x > y ? 1 : 0);
    return compareFolded(textOf(a), textOf(b));
}

// The rows of the run, each holding the values of the columns the design names, in the
// order they were first named (a slot each).
class RowReader {
  public:
    RowReader(const ReportDesign& d, Connection& conn) : d_(d) {
        main_ = CreateRecordset();
        main_->Open(selectAll(d.table, d.where), conn);
        if (!d.joinTable.empty()) {
            joined_ = CreateRecordset();
            joined_->Open(selectAll(d.joinTable), conn);
            joinFrom_ = main_->FieldIndex(d.joinFrom);
            joinTo_ = joined_->FieldIndex(d.joinTo);
        }
    }

    // The slot of a column; an unknown column is fault 3265.
    std::size_t slot(const std::string& name) {
        auto it = slots_.find(foldCase(name));
        if (it != slots_.end()) return it->second;
        const std::string prefix = d_.joinTable + ".";
        if (joined_ && name.size() > prefix.size() &&
            equalFolded(name.substr(0, prefix.size()), prefix))
            sources_.push_back({true, joined_->FieldIndex(name.substr(prefix.size()))});
        else
            sources_.push_back({false, main_->FieldIndex(name)});
        return slots_[foldCase(name)] = sources_.size() - 1;
    }

    std::vector<Row> rows() {
        std::unordered_map<std::string, Row> joinedRows = readJoined();
        std::vector<Row> rows;
        rows.reserve(static_cast<std::size_t>(std::max(0L, main_->RecordCount())));
        const Row none(sources_.size(), Variant::Null());
        // A set opens on its first row, or past the end when it has none.
        for (; !main_->Eof(); main_->MoveNext()) {
            const Row* other = &none;
            if (joined_) {
                auto it = joinedRows.find(foldCase(textOf(main_->GetValue(joinFrom_))));
                if (it != joinedRows.end()) other = &it->second;
            }
            Row row(sources_.size());
            for (std::size_t s = 0; s < sources_.size(); ++s)
                row[s] = sources_[s].joined ? (*other)[s] : main_->GetValue(sources_[s].field);
            rows.push_back(std::move(row));
        }
        return rows;
    }

  private:
    struct Source {
        bool joined;
        int field;
    };

    // The joined table's rows by their key; the first row of a key stands for it.
    std::unordered_map<std::string, Row> readJoined() {
        std::unordered_map<std::string, Row> byKey;
        if (!joined_) return byKey;
        for (; !joined_->Eof(); joined_->MoveNext()) {
            Row row(sources_.size(), Variant::Null());
            for (std::size_t s = 0; s < sources_.size(); ++s)
                if (sources_[s].joined) row[s] = joined_->GetValue(sources_[s].field);
            byKey.emplace(foldCase(textOf(joined_->GetValue(joinTo_))), std::move(row));
        }
        return byKey;
    }

    const ReportDesign& d_;
    std::unique_ptr<Recordset> main_, joined_;
    int joinFrom_ = 0, joinTo_ = 0;
    std::vector<Source> sources_;
    std::map<std::string, std::size_t> slots_;
};

// What a column prints for a row: its value, or the product of its factors.
Variant valueOf(const std::vector<std::size_t>& factors, const Row& row) {
    if (factors.size() == 1) return row[factors[0]];
    double product = 1;
    for (std::size_t s : factors) {
        if (row[s].IsNull() || row[s].IsEmpty()) return Variant::Null();
        product *= CDbl(row[s]);
    }
    return Variant::Double(product);
}

std::string cut(const std::string& text, int width) {
    return Len(text) > width ? Left(text, width) : text;
}

// Lays out the lines of the run: group heads, details, group totals, the report's total.
class Layout {
  public:
    Layout(const ReportDesign& d, std::vector<std::vector<std::size_t>> factors)
        : d_(d), factors_(std::move(factors)), group_(d.columns.size()), all_(d.columns.size()) {}

    void detail(const Row& row) {
        ReportLine line;
        for (std::size_t c = 0; c < d_.columns.size(); ++c) {
            const ReportColumn& column = d_.columns[c];
            const Variant value = valueOf(factors_[c], row);
            line.cells.push_back(cut(Format(value, column.mask), column.width));
            double n = 0;
            if (column.sum && numberFor(value, n)) {
                group_.sums[c] += n;
                all_.sums[c] += n;
            }
        }
        ++group_.count;
        ++all_.count;
        lines.push_back(std::move(line));
    }

    void groupHead(const Variant& value) {
        groupName_ = textOf(value).empty() ? "(none)" : textOf(value);
        group_ = Totals(d_.columns.size());
        lines.push_back({ReportLine::Kind::GroupHead, d_.groupCaption + ": " + groupName_, {}});
    }

    void groupTotal() {
        lines.push_back(total(ReportLine::Kind::GroupTotal, "Total for " + groupName_, group_));
    }
    void reportTotal() {
        lines.push_back(total(ReportLine::Kind::ReportTotal, "Report total", all_));
    }

    std::vector<ReportLine> lines;

  private:
    struct Totals {
        explicit Totals(std::size_t columns) : sums(columns, 0.0) {}
        std::vector<long double> sums;
        long count = 0;
    };

    ReportLine total(ReportLine::Kind kind, std::string label, const Totals& t) const {
        if (!d_.countCaption.empty())
            label += "   " + d_.countCaption + " " + std::to_string(t.count);
        ReportLine line{kind, label, {}};
        for (std::size_t c = 0; c < d_.columns.size(); ++c)
            line.cells.push_back(
                d_.columns[c].sum
                    ? Format(Variant::Double(static_cast<double>(t.sums[c])), d_.columns[c].mask)
                    : "");
        return line;
    }

    const ReportDesign& d_;
    std::vector<std::vector<std::size_t>> factors_;
    Totals group_, all_;
    std::string groupName_;
};

// The company's name from the company setup, "" when there is none.
std::string companyName(Connection& conn) {
    try {
        auto setup = CreateRecordset();
        setup->Open(selectAll("Setup"), conn);
        if (!setup->Eof()) return textOf(setup->Fields("Company Name").Value());
    } catch (const VbError&) {
    }
    return "";
}

}  // namespace

std::string RanReport::pageText(const std::string& line, int page) const {
    std::string text = line;
    for (const auto& [word, value] : {std::pair<std::string, std::string>{"{title}", title},
                                      {"{page}", std::to_string(page)},
                                      {"{pages}", std::to_string(pages.size())},
                                      {"{date}", date},
                                      {"{company}", company}})
        text = Replace(text, word, value);
    return text;
}

int RanReport::totalLabelSpan() const {
    const int count = static_cast<int>(columns.size());
    for (int c = 1; c < count; ++c)
        if (columns[c].sum) return c;
    return count;
}

namespace {

// The rows a report lists, sorted, with where its columns and group stand in them.
struct Selection {
    std::vector<std::vector<std::size_t>> factors;  // per column, the slots it multiplies
    bool grouped = false;
    std::size_t groupSlot = 0;
    std::vector<Row> rows;
};

// Reads and sorts the rows. The record sets close on return, before the lines are laid out,
// so the table and the lines are never in memory together.
Selection selectRows(const ReportDesign& d, Connection& conn) {
    RowReader reader(d, conn);
    Selection s;
    for (const ReportColumn& column : d.columns) {
        std::vector<std::size_t> slots;
        for (const std::string& name : column.factors)
            slots.push_back(reader.slot(name));
        s.factors.push_back(std::move(slots));
    }
    std::vector<std::pair<std::size_t, bool>> keys;
    s.grouped = !d.group.empty();
    s.groupSlot = s.grouped ? reader.slot(d.group) : 0;
    if (s.grouped) keys.push_back({s.groupSlot, false});
    for (const ReportSortKey& key : d.sort)
        keys.push_back({reader.slot(key.column), key.descending});

    s.rows = reader.rows();
    std::stable_sort(s.rows.begin(), s.rows.end(), [&](const Row& a, const Row& b) {
        for (const auto& [slot, descending] : keys) {
            const int c = compareValues(a[slot], b[slot]);
            if (c != 0) return descending ? c > 0 : c < 0;
        }
        return false;
    });
    return s;
}

}  // namespace

RanReport runReport(const ReportDesign& d, const std::string& databasePath) {
    auto conn = CreateConnection();
    conn->SetCursorLocation(ado::adUseClient);
    conn->Open(connectionText(databasePath));
    Selection selection = selectRows(d, *conn);
    const std::vector<Row>& rows = selection.rows;
    const bool grouped = selection.grouped;
    const std::size_t groupSlot = selection.groupSlot;

    Layout layout(d, std::move(selection.factors));
    for (std::size_t r = 0; r < rows.size(); ++r) {
        if (grouped && (r == 0 || compareValues(rows[r][groupSlot], rows[r - 1][groupSlot]) != 0)) {
            if (r > 0) layout.groupTotal();
            layout.groupHead(rows[r][groupSlot]);
        }
        layout.detail(rows[r]);
    }
    if (grouped && !rows.empty()) layout.groupTotal();
    if (rows.empty()) layout.lines.push_back({ReportLine::Kind::Nothing, "Nothing to list.", {}});
    layout.reportTotal();
    std::vector<Row>().swap(selection.rows);  // the lines hold all that is printed now

    RanReport report;
    report.title = d.title;
    report.header = d.header;
    report.footer = d.footer;
    report.date = formatDate(theClock().Date(), "MM/DD/YYYY");
    report.company = companyName(*conn);
    for (const ReportColumn& column : d.columns)
        report.columns.push_back({column.caption, column.width, column.right, column.sum});
    for (std::size_t i = 0; i < layout.lines.size(); i += static_cast<std::size_t>(d.lines)) {
        const auto from = layout.lines.begin() + static_cast<long>(i);
        const auto to =
            layout.lines.begin() + static_cast<long>(std::min(layout.lines.size(), i + d.lines));
        report.pages.push_back(
            {std::vector<ReportLine>(std::make_move_iterator(from), std::make_move_iterator(to))});
    }
    return report;
}
