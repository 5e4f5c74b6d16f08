// The first half of MakePage2: the groups of the catalogue in List1, the operator's pick,
// the chosen items in List2 and List3, the site's name and the number of pages.
#include <filesystem>

#include "base/convert.h"
#include "base/format.h"
#include "base/kept_listings.h"
#include "base/strings.h"
#include "forms/binding.h"
#include "forms/runtime.h"
#include "records/data_control.h"
#include "records/pane.h"
#include "records/recordset.h"
#include "shell/errhandler.h"
#include "shell/module.h"
#include "shell/products.h"
#include "shell/when.h"
#include "webcat/web_catalogue.h"

namespace {

enum Column { Category = 1, PageNo = 18, Retail = 24, StockNo = 27 };

// The text before " - " of a group row: the group's value.
std::string rowKey(const std::string& row) {
    const long dash = InStr(row, " - ");
    return dash > 0 ? Left(row, dash - 1) : row;
}

// "[column] = Null" or "[column] = 'v'": the records of one group.
std::string groupFilter(const std::string& column, const Variant& v) {
    return v.IsNull() ? "[" + column + "] = Null" : "[" + column + "] = '" + textOf(v) + "'";
}

}  // namespace

void WebCatalogue::Command6_Click() {
    GroupByPageNo = true;
    MakePage2();
}

void WebCatalogue::Command10_Click() {
    GroupByCategory = true;
    MakePage2();
}

void WebCatalogue::Command20_Click() {
    PriceField = (*this)("Combo1").Text();
    GroupByPrice = true;
    MakePage2();
}

void WebCatalogue::Command8_Click() {
    GroupByCurrent = true;
    MakePage2();
}

void WebCatalogue::Command13_Click() {
    PanelAction = Variant::Integer(1);
    Mod().PanelGo = true;
}

void WebCatalogue::Command15_Click() {
    PanelAction = Variant::Integer(2);
    Mod().PanelGo = true;
}

void WebCatalogue::Command19_Click() {
    PanelAction = Variant::Integer(4);
    Mod().PanelGo = true;
}

void WebCatalogue::Command17_Click() {
    Trap on = reportTo("(Form) Products::Sub Command17_Click");
    Module& m = Mod();
    if (when(on, [&] {
            return !(*this)("Frame12").Visible() && !(*this)("List1").Visible() &&
                   !CBool(m.SelectItemsMode);
        })) {
        on([&] { MakingAll = true; });
        on([&] { PageNumber -= 1; });
        if (when(on, [&] { return (*this)("chkDetail", 0).Caption() == "Edit Main Pages"; }))
            on([&] { (*this)("chkDetail", 0).SetValue(Variant::Integer(0)); });
        on([&] {
            P.Wb1().Write("<center><bold><font size=3>Creating Page: " +
                          std::to_string(PageNumber) + "</center></bold></font>");
        });
    } else {
        on([&] { PanelAction = Variant::Integer(3); });
    }
    on([&] { m.PanelGo = true; });
}

void WebCatalogue::waitForPanel() {
    Module& m = Mod();
    while (!m.PanelGo)
        Runtime::Current().WaitForUser();
    m.PanelGo = false;
}

std::string WebCatalogue::groupColumn() const {
    if (GroupByPageNo || GroupByCurrent) return GroupByPageNo ? "PageNo" : "StockNo";
    return GroupByCategory ? "Category" : PriceField;
}

Variant WebCatalogue::groupValue() {
    Recordset& rs = *P.adoPrimaryRS;
    if (GroupByPageNo) return rs.GetValue(PageNo);
    if (GroupByCategory) return rs.GetValue(Category);
    if (GroupByCurrent) return rs.GetValue(StockNo);
    if (PriceField == "Retail") return rs.GetValue(Retail);
    if (Left(PriceField, 4) == "Cost") return rs.GetValue(CInt(Variant(Mid(PriceField, 5))) + 1);
    return rs.GetValue(rs.FieldIndex(PriceField));
}

void WebCatalogue::MakePage2() {
    Trap on = reportTo("(Form) Products::Sub ShowPicture");
    startRun(on);
    findGroups(on);
    if (!pickGroups(on)) return;
    for (;;) {
        if (!collectItems(on)) return;
        if (!prepareRun(on)) break;
        if (!writePages(on)) break;
    }
    endRun(on, false);
}

void WebCatalogue::startRun(Trap& on) {
    Module& m = Mod();
    on([&] { m.PanelGo = false; });
    on([&] { PanelAction = Variant(); });
    on([&] { MakingAll = false; });
    for (const char* list : {"List1", "List2", "List3"})
        on([&] { (*this)(list).Clear(); });
    on([&] { (*this)("txtTitle").SetText(PageTitle); });
    on([&] {
        P.Wb1().Write(
            "<p align=center><font size=5 font color=blue> Finding & Sorting "
            "Pages...<br><br><font size=5>Please Wait!</font>");
    });
    on([&] { P.Data1->SetRecordSource("Category"); });
    on([&] { P.Data1->Refresh(); });
    on([&] { P.Data1->Recordset().MoveLast(); });
    on([&] { P.Data1->Recordset().MoveFirst(); });
    on([&] { (*this)("Frame9").SetVisible(false); });
    on([&] { (*this)("Frame5").SetVisible(false); });
    on([&] { FrameStyle = Variant::Integer(4); });
    for (const char* name : {"Command13", "Command15", "Command17", "Command19"})
        on([&] { (*this)(name).SetVisible(true); });
    for (const char* name : {"cmdShowPicPath", "cmdShowPic", "Command4", "Text1"})
        on([&] { (*this)(name).SetVisible(false); });
    on([&] { (*this)("chkDetail", 3).SetVisible(true); });
    on([&] { (*this)("Command17").SetCaption("Continue"); });
    Control& newPage = (*this)("chkDetail", 3);
    Control& title = (*this)("chkDetail", 2);
    if (GroupByPageNo) {
        on([&] { P.adoPrimaryRS->SetSort("PageNo"); });
        on([&] { newPage.SetCaption("New Page On Page # Change"); });
        on([&] { title.SetCaption("Use Page # As Title"); });
    } else if (GroupByCategory) {
        on([&] { P.adoPrimaryRS->SetSort("Category"); });
        on([&] { newPage.SetCaption("New Page On Category Change"); });
        on([&] { title.SetCaption("Use Category As Title"); });
    } else if (GroupByPrice) {
        on([&] { P.adoPrimaryRS->SetSort(PriceField); });
        on([&] { newPage.SetCaption("New Page On " + PriceField + " Price Change"); });
        on([&] { title.SetCaption("Use " + PriceField + " As Title"); });
    } else {
        on([&] { P.adoPrimaryRS->SetSort("StockNo"); });
        on([&] { newPage.SetVisible(false); });
        on([&] { title.SetCaption("Add Page # After Title"); });
    }
}

void WebCatalogue::findGroups(Trap& on) {
    Recordset& rs = *P.adoPrimaryRS;
    Control& status = (*this)("lblStatus");
    const std::string column = groupColumn();
    bool ended = false;
    on([&] { GroupCount = -1; });
    on([&] { rs.MoveFirst(); });
    while (!ended && !rs.Eof()) {
        Variant v;
        long count = 0;
        on([&] { GroupCount += 1; });
        on([&] { v = groupValue(); });
        if (GroupByPageNo && !v.IsNull()) {
            on([&] { v = Variant(Replace(textOf(v), "'", "")); });
            if (when(on, [&] { return textOf(rs.GetValue(PageNo)) != textOf(v); }))
                on([&] { rs.SetValue(PageNo, v); });
        }
        on([&] { P.adoprimaryrs2->SetFilter(groupFilter(column, v)); });
        on([&] { P.adoprimaryrs2->MoveFirst(); });
        on([&] { count = P.adoprimaryrs2->RecordCount(); });
        placeGroupRow(on, v, count, ended);
        if (GroupByCurrent) {
            on([&] { rs.MoveNext(); });
        } else {
            const long before = rs.AbsolutePosition();
            const std::string next =
                v.IsNull() ? "[" + column + "] <> Null" : "[" + column + "] <> '" + textOf(v) + "'";
            // A value the criteria cannot carry (an apostrophe) fails the find; the walk
            // then goes on by hand to the next record of another value.
            if (!on([&] { rs.Find(next, 0, ado::adSearchForward); })) {
                on([&] {
                    while (!rs.Eof() && UCase(textOf(groupValue())) == UCase(textOf(v)) &&
                           groupValue().IsNull() == v.IsNull())
                        rs.MoveNext();
                });
            }
            if (!rs.Eof() && rs.AbsolutePosition() <= before) ended = true;
        }
        on([&] { status.SetCaption("Processing/Sorting Pages: #" + std::to_string(GroupCount)); });
        on([&] { Runtime::Current().LetEventsRun(); });
    }
    on([&] {
        status.SetCaption("Total Pages Available: " +
                          std::to_string(GroupByCurrent ? 1 : GroupCount + 1));
    });
}

void WebCatalogue::placeGroupRow(Trap& on, const Variant& v, long count, bool& ended) {
    Control& list = (*this)("List1");
    const std::string items = " - Items: (" + std::to_string(count) + ")";
    if (v.IsNull()) {
        on([&] { list.AddItem("Null" + items, 0); });
        return;
    }
    std::string text;
    on([&] { text = (GroupByPrice ? Format(v, "$#,###.00") : textOf(v)) + items; });
    const double number = Val(textOf(v));
    for (int i = 0; i < list.ListCount(); ++i) {
        if (Val(list.List(i)) > number && list.List(i) != "Null") {
            on([&] { list.AddItem(text, i); });
            return;
        }
    }
    if (GroupByCurrent) {
        on([&] { list.AddItem("All Current Records"); });
        ended = true;
        return;
    }
    on([&] { list.AddItem(text); });
}

bool WebCatalogue::pickGroups(Trap& on) {
    Module& m = Mod();
    Control& list = (*this)("List1");
    on([&] { list.SetVisible(true); });
    for (;;) {
        on([&] { waitForPanel(); });
        const int action = textOf(PanelAction).empty() ? 0 : CInt(PanelAction);
        if (action == 1 || action == 2) {
            for (int i = 0; i < list.ListCount(); ++i)
                on([&] { list.SetSelected(i, action == 1); });
        } else if (action == 3) {
            int chosen = 0;
            for (int i = 0; i < list.ListCount(); ++i)
                chosen += list.Selected(i) ? 1 : 0;
            on([&] { m.TotalPages = Variant::Integer(chosen); });
            on([&] { m.SelectItemsMode = Variant(false); });
            return true;
        } else if (action == 4) {
            endRun(on, true);
            return false;
        }
    }
}

bool WebCatalogue::collectItems(Trap& on) {
    Module& m = Mod();
    for (;;) {
        Control& groups = (*this)("List1");
        Control& items = (*this)("List2");
        Recordset& rs = *P.adoPrimaryRS;
        on([&] { ThumbsRun = Variant::Integer(-1); });
        on([&] { m.ItemSerial = Variant::Integer(-1); });
        for (int g = 0; g < groups.ListCount(); ++g) {
            if (!groups.Selected(g)) continue;
            std::string value;
            on([&] { (*this)("List4", 0).AddItem(groups.List(g)); });
            on([&] { value = GroupByCurrent ? "1" : rowKey(groups.List(g)); });
            on([&] {
                const Variant v = value == "Null" ? Variant::Null() : Variant(value);
                if (GroupByCurrent)
                    m.SearchCriteria = Variant("");
                else if (GroupByPageNo)
                    m.SearchCriteria =
                        Variant(v.IsNull() ? "[PageNo] = Null" : "[PageNo]='" + value + "'");
                else
                    m.SearchCriteria = Variant(groupFilter(groupColumn(), v));
            });
            if (!GroupByCurrent) on([&] { rs.SetFilter(CStr(m.SearchCriteria)); });
            on([&] { rs.MoveFirst(); });
            on([&] {
                (*this)("lblStatus")
                    .SetCaption(std::to_string(rs.RecordCount()) + " For Page # " + value);
            });
            on([&] { groups.SetVisible(false); });
            if (!when(on, [&] { return CBool(m.SelectItemsMode); })) {
                const KeptListings run;   // each move shows the item view and its picture
                const RowsAwaited moves;  // and the bound boxes, which nobody reads meanwhile
                while (!rs.Eof()) {
                    on([&] { m.ItemSerial = Add(m.ItemSerial, Variant::Integer(1)); });
                    on([&] { items.AddItem(textOf(rs.GetValue(StockNo))); });
                    on([&] { items.SetSelected(items.ListCount() - 1, true); });
                    on([&] {
                        (*this)("lblStatus")
                            .SetCaption(CStr(Add(m.ItemSerial, Variant::Integer(1))) +
                                        " For Page # " + value);
                    });
                    if (!on([&] { rs.MoveNext(); })) break;
                }
            } else {
                on([&] { ThumbsRun = Add(ThumbsRun, Variant::Integer(1)); });
                on([&] { m.ThumbsMode = true; });
                on([&] { MakeThumbs(); });
            }
        }
        if (!when(on, [&] { return CBool(m.SelectItemsMode); })) return true;
        // The operator picks the items on the thumbnails page.
        const std::string thumbs = CStr(m.AppDir) + "tmpthumb.htm";
        for (;;) {
            on([&] { waitForPanel(); });
            const int action = textOf(PanelAction).empty() ? 0 : CInt(PanelAction);
            if (action == 1 || action == 2) {
                on([&] { m.SelectDefault = action == 1; });
                on([&] { items.Clear(); });
                if (action == 2) on([&] { P.Wb1().Navigate2("About:Blank"); });
                on([&] { std::filesystem::remove(thumbs); });
                break;
            }
            if (action == 3) {
                on([&] {
                    P.Wb1().Write(
                        "<center><bold><font size=7>One Moment Please...</center></bold></font>");
                });
                return true;
            }
            if (action == 4) {
                endRun(on, true);
                return false;
            }
        }
    }
}

bool WebCatalogue::prepareRun(Trap& on) {
    Module& m = Mod();
    for (const char* name : {"Command13", "Command15", "List1"})
        on([&] { (*this)(name).SetVisible(false); });
    on([&] { (*this)("List2").SetVisible(true); });
    on([&] { m.SelectItemsMode = Variant(false); });
    on([&] { Command12_Click(); });
    makeImagesFolder(on);
    if (PageBase.empty()) {
        CommonDialog dialog;
        std::string name;
        on([&] { dialog.InitDir = CStr(m.AppDir) + "Pages/"; });
        on([&] { dialog.FileName = "catpage.htm"; });
        on([&] { dialog.Filter = "Web Pages|*.htm;*.html"; });
        on([&] { name = Runtime::Current().ui().ShowSave(dialog) ? dialog.FileName : ""; });
        if (name.empty() || name == "*.htm") return false;
        // The site's name is the file's own name, never its folder.
        on([&] { name = std::filesystem::path(name).filename().string(); });
        on([&] {
            const long dot = InStr(name, ".");
            PageBase = dot > 0 ? Left(name, dot - 1) : name;
        });
        if (PageBase.empty()) PageBase = "catpage";
    }
    Control& chosen = (*this)("List2");
    Control& onPages = (*this)("List3");
    on([&] { onPages.Clear(); });
    for (int i = 0; i < chosen.ListCount(); ++i)
        if (chosen.Selected(i)) on([&] { onPages.AddItem(chosen.List(i)); });
    on([&] { chosen.SetVisible(false); });
    on([&] { P.Data2->SetRecordSource("Select * From Products"); });
    on([&] { P.Data2->Refresh(); });
    on([&] { items().MoveLast(); });
    on([&] { items().MoveFirst(); });
    on([&] { PageNumber = 1; });
    on([&] { listStart_ = 0; });
    on([&] { Text3_Change(3); });
    return true;
}

void WebCatalogue::endRun(Trap& on, bool cancelled) {
    for (bool* flag : {&GroupByPageNo, &GroupByCategory, &GroupByPrice, &GroupByCurrent})
        *flag = false;
    on([&] { PanelAction = Variant(); });
    on([&] { ThumbsRun = Variant(); });
    on([&] { MakingAll = false; });
    if (cancelled) on([&] { P.adoPrimaryRS->MoveFirst(); });
    for (const char* name : {"List1", "List2", "Command13", "Command15", "Command17", "Command19"})
        on([&] { (*this)(name).SetVisible(false); });
    // Done stands again for the next run's page setup.
    on([&] { (*this)("Command26").SetVisible(true); });
    for (const char* name : {"cmdShowPicPath", "cmdShowPic", "Command4", "Text1"})
        on([&] { (*this)(name).SetVisible(true); });
}

void WebCatalogue::Text3_Change(int Index) {
    Trap on = reportTo("(Form) Products::Sub Text3_Change");
    Module& m = Mod();
    Control& box = (*this)("Text3", Index);
    const std::string text = box.Text();
    if (Index == 0) {
        if (!text.empty()) on([&] { m.ImageBorder = Variant(text); });
    } else if (Index == 1 || Index == 2) {
        const std::string w = (*this)("Text3", 1).Text(), h = (*this)("Text3", 2).Text();
        if (!w.empty() && !h.empty())
            m.ImageSizeAttr = "width=" + w + " height=" + h;
        else if (!w.empty())
            m.ImageSizeAttr = "width=" + w;
        else if (!h.empty())
            m.ImageSizeAttr = "height=" + h;
    } else if (Index == 3) {
        const int count = (*this)("List3").ListCount();
        if (text.empty()) {
            on([&] { box.SetText(std::to_string(count)); });
            return;  // the box's own Change has counted
        }
        if (!IsNumeric(Variant(text)) || CDbl(Variant(text)) == 0) {
            on([&] { m.ItemsPerPage = 1; });
            on([&] { m.TotalPages = Variant::Integer(1); });
        } else {
            on([&] { m.ItemsPerPage = CInt(Variant(text)); });
            if (!NewPageOnChange)
                on([&] {
                    const int pages = count / m.ItemsPerPage;
                    m.TotalPages = Variant::Long(pages + (pages * m.ItemsPerPage < count ? 1 : 0));
                });
        }
        on([&] {
            (*this)("Label7").SetCaption("Total Items: " + std::to_string(count) + vb::vbCrLf +
                                         " Total Pages: " + textOf(m.TotalPages));
        });
    } else if (Index == 4) {
        on([&] { rebuildCellStyle(); });
    }
}

void WebCatalogue::rebuildCellStyle() {
    CellStyle =
        Variant("style='border-style: " + textOf(CellBorderStyle) + "; border-width: " +
                (*this)("Text3", 4).Text() + "' bordercolor='" + textOf(CellBorderColor) +
                (textOf(CellColor).empty() ? "'>" : "' bgcolor='" + textOf(CellColor) + "'>"));
}

void WebCatalogue::newPageOnChange(Trap& on, bool checked) {
    Module& m = Mod();
    if (!checked) {
        on([&] { NewPageOnChange = false; });
        return;
    }
    Control& groups = (*this)("List4", 0);
    Control& labels = (*this)("List4", 1);
    on([&] { NewPageOnChange = true; });
    on([&] { m.TotalPages = Variant::Integer(0); });
    for (int i = 0; i < groups.ListCount(); ++i) {
        on([&] {
            const std::string row = groups.List(i);
            const long open = InStr(row, "(");
            const long close = InStr(open + 1, row, ")");
            const long count = CLng(Variant(Mid(row, open + 1, close - open - 1)));
            const std::string key = rowKey(row);
            const long perPage = m.ItemsPerPage;
            if (perPage == 0) throw VbError(11);  // division by zero
            if (count <= perPage) {
                m.TotalPages = Add(m.TotalPages, Variant::Integer(1));
                labels.AddItem(key);
                return;
            }
            const long pages = count / perPage + (count % perPage ? 1 : 0);
            m.TotalPages = Add(m.TotalPages, Variant::Long(static_cast<std::int32_t>(pages)));
            for (long n = 1; n <= pages; ++n)
                labels.AddItem(key + "-" + std::to_string(n));
        });
    }
    on([&] { (*this)("Text3", 3).SetText("30"); });
    on([&] { groups.Clear(); });
}
