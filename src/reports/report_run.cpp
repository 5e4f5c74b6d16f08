#include "reports/report_run.h"

#include <map>
#include <memory>

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

// A value as a number: the number kinds, a date, or a text that is a number.
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

// Whether two rows fall in one group, as the store orders them: nothing (no value or an
// empty text) is alike, numbers by value (page "2" and "2.0"), text ignoring case.
bool sameGroup(const Variant& a, const Variant& b) {
    const bool noA = isNothing(a), noB = isNothing(b);
    if (noA || noB) return noA == noB;
    double x = 0, y = 0;
    if (numberFor(a, x) && numberFor(b, y)) return x == y;
    return equalFolded(textOf(a), textOf(b));
}

// The columns a run reads, each once, in the order the design first names them (a slot
// each), with per printed column the slots it multiplies.
struct Reading {
    RowQuery query;
    std::vector<std::vector<std::size_t>> factors;
    bool grouped = false;
    std::size_t groupSlot = 0;

    explicit Reading(const ReportDesign& d) {
        query.table = d.table;
        query.where = d.where;
        query.joinTable = d.joinTable;
        query.joinFrom = d.joinFrom;
        query.joinTo = d.joinTo;
        for (const ReportColumn& column : d.columns) {
            std::vector<std::size_t> slots;
            for (const std::string& name : column.factors)
                slots.push_back(slot(name));
            factors.push_back(std::move(slots));
        }
        grouped = !d.group.empty();
        if (grouped) {
            groupSlot = slot(d.group);
            query.order.push_back({d.group, false});
        }
        for (const ReportSortKey& key : d.sort)
            query.order.push_back({key.column, key.descending});
    }

    // The same selection with only what tells the groups apart, for counting the lines.
    RowQuery counting() const {
        RowQuery q = query;
        q.columns.clear();
        q.order.clear();
        if (grouped) {
            q.columns = {query.columns[groupSlot]};
            q.order = {query.order.front()};
        }
        return q;
    }

  private:
    std::size_t slot(const std::string& name) {
        auto it = slots_.find(foldCase(name));
        if (it != slots_.end()) return it->second;
        query.columns.push_back(name);
        return slots_[foldCase(name)] = query.columns.size() - 1;
    }
    std::map<std::string, std::size_t> slots_;
};

// The values of the current row of a stream, one per slot.
void readRow(const RowStream& rows, Row& row) {
    for (std::size_t s = 0; s < row.size(); ++s)
        row[s] = rows.GetValue(static_cast<int>(s));
}

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

// Fills pages with lines and hands each on when it is full.
class Pager {
  public:
    Pager(std::size_t lines, ReportPages& out) : lines_(lines), out_(out) {}
    void add(ReportLine line) {
        page_.lines.push_back(std::move(line));
        if (page_.lines.size() == lines_) handOn();
    }
    // Hands on the last page; gives the number of pages.
    int finish() {
        if (!page_.lines.empty()) handOn();
        return pages_;
    }

  private:
    void handOn() {
        out_.page(page_);
        page_.lines.clear();
        ++pages_;
    }
    std::size_t lines_;
    ReportPages& out_;
    ReportPage page_;
    int pages_ = 0;
};

// Lays out the lines of the run as the rows come: group heads, details, group totals, the
// report's total, adding up the sums on the way.
class Layout {
  public:
    Layout(const ReportDesign& d, std::vector<std::vector<std::size_t>> factors, Pager& pager)
        : d_(d),
          factors_(std::move(factors)),
          pager_(pager),
          group_(d.columns.size()),
          all_(d.columns.size()) {}

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
        pager_.add(std::move(line));
    }

    void groupHead(const Variant& value) {
        groupName_ = textOf(value).empty() ? "(none)" : textOf(value);
        group_ = Totals(d_.columns.size());
        pager_.add({ReportLine::Kind::GroupHead, d_.groupCaption + ": " + groupName_, {}});
    }

    void groupTotal() {
        pager_.add(total(ReportLine::Kind::GroupTotal, "Total for " + groupName_, group_));
    }
    void nothing() { pager_.add({ReportLine::Kind::Nothing, "Nothing to list.", {}}); }
    void reportTotal() { pager_.add(total(ReportLine::Kind::ReportTotal, "Report total", all_)); }

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
    Pager& pager_;
    Totals group_, all_;
    std::string groupName_;
};

std::unique_ptr<RowStream> openRows(const RowQuery& query, Connection& conn) {
    auto rows = CreateRowStream();
    rows->Open(query, conn);
    return rows;
}

// How many lines the run lays out: a line per row, a head and a total per group, the note
// of a report without rows and the report's total.
long linesOf(const Reading& reading, Connection& conn) {
    const auto rows = openRows(reading.counting(), conn);
    long count = 0, groups = 0;
    Variant last;
    while (rows->Next()) {
        if (reading.grouped) {
            Variant value = rows->GetValue(0);
            if (count == 0 || !sameGroup(value, last)) ++groups;
            last = std::move(value);
        }
        ++count;
    }
    return count + 2 * groups + (count == 0 ? 1 : 0) + 1;
}

// The company's name from the company setup, "" when there is none.
std::string companyName(Connection& conn) {
    try {
        auto setup = CreateRecordset();
        setup->Open("select * from [Setup]", conn);
        if (!setup->Eof()) return textOf(setup->Fields("Company Name").Value());
    } catch (const VbError&) {
    }
    return "";
}

}  // namespace

std::string ReportFrame::pageText(const std::string& line, int page) const {
    std::string text = line;
    for (const auto& [word, value] : {std::pair<std::string, std::string>{"{title}", title},
                                      {"{page}", std::to_string(page)},
                                      {"{pages}", std::to_string(pageCount)},
                                      {"{date}", date},
                                      {"{company}", company}})
        text = Replace(text, word, value);
    return text;
}

int ReportFrame::totalLabelSpan() const {
    const int count = static_cast<int>(columns.size());
    for (int c = 1; c < count; ++c)
        if (columns[c].sum) return c;
    return count;
}

int runReport(const ReportDesign& d, const std::string& databasePath, ReportPages& out) {
    auto conn = CreateConnection();
    conn->SetCursorLocation(ado::adUseClient);
    conn->Open(connectionText(databasePath));
    const Reading reading(d);
    // The rows are read twice, first only counted, so that every page can tell how many
    // pages there are without the pages being held.
    const auto rows = openRows(reading.query, *conn);
    // The first step begins the file's reading, which the count then shares: both see the
    // same rows.
    bool more = rows->Next();
    const long lines = linesOf(reading, *conn);
    const auto perPage = static_cast<long>(d.lines);

    ReportFrame frame;
    frame.title = d.title;
    frame.header = d.header;
    frame.footer = d.footer;
    frame.date = formatDate(theClock().Date(), "MM/DD/YYYY");
    frame.company = companyName(*conn);
    for (const ReportColumn& column : d.columns)
        frame.columns.push_back({column.caption, column.width, column.right, column.sum});
    frame.pageCount = static_cast<int>((lines + perPage - 1) / perPage);
    out.begin(frame);

    Pager pager(static_cast<std::size_t>(perPage), out);
    Layout layout(d, reading.factors, pager);
    Row row(reading.query.columns.size());
    Variant group;
    bool any = false;
    for (; more; more = rows->Next()) {
        readRow(*rows, row);
        if (reading.grouped && (!any || !sameGroup(row[reading.groupSlot], group))) {
            if (any) layout.groupTotal();
            group = row[reading.groupSlot];
            layout.groupHead(group);
        }
        layout.detail(row);
        any = true;
    }
    if (reading.grouped && any) layout.groupTotal();
    if (!any) layout.nothing();
    layout.reportTotal();
    const int pages = pager.finish();
    out.end();
    return pages;
}

namespace {

// Keeps every page of a run.
class KeptPages : public ReportPages {
  public:
    explicit KeptPages(RanReport& report) : report_(report) {}
    void begin(const ReportFrame& frame) override { static_cast<ReportFrame&>(report_) = frame; }
    void page(const ReportPage& page) override { report_.pages.push_back(page); }
    void end() override {}

  private:
    RanReport& report_;
};

}  // namespace

RanReport runReport(const ReportDesign& design, const std::string& databasePath) {
    RanReport report;
    KeptPages kept(report);
    runReport(design, databasePath, kept);
    return report;
}

void replayReport(const RanReport& report, ReportPages& out) {
    ReportFrame frame = report;
    frame.pageCount = static_cast<int>(report.pages.size());
    out.begin(frame);
    for (const ReportPage& page : report.pages)
        out.page(page);
    out.end();
}
