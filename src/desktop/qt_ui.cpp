#include "desktop/qt_ui.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QColorDialog>
#include <QCursor>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "base/convert.h"
#include "desktop/form_host.h"
#include "desktop/guard.h"
#include "desktop/web_pane.h"
#include "forms/binding.h"
#include "forms/form.h"
#include "forms/runtime.h"

namespace desktop {

namespace {

QString qs(const std::string& s) {
    return QString::fromStdString(s);
}

QString shown(const std::string& s) {
    QString t = qs(s);
    t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return t;
}

QColor fromClassic(long colour) {
    return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

long toClassic(const QColor& colour) {
    return colour.red() + colour.green() * 256L + colour.blue() * 65536L;
}

bool sameName(const std::string& a, const std::string& b) {
    return !NoCase{}(a, b) && !NoCase{}(b, a);
}

}  // namespace

QtUi::QtUi() : host_(std::make_unique<FormHost>(*this)) {
    // A wait for the user comes back now and then even when nothing happens, so that a
    // flag set by the program itself is seen.
    heartbeat_.setInterval(200);
    heartbeat_.start();
    // Bound boxes that let rows pass unseen during a long run are shown their row before
    // anything of the windows draws or the user acts, in any loop of events.
    auto* events = QAbstractEventDispatcher::instance();
    QObject::connect(events, &QAbstractEventDispatcher::aboutToBlock,
                     [] { RowsAwaited::showAll(); });
    QObject::connect(events, &QAbstractEventDispatcher::awake, [] { RowsAwaited::showAll(); });
}

QtUi::~QtUi() {
    delete reportView_.data();
    host_.reset();
    panes_.clear();
    if (busy_) QApplication::restoreOverrideCursor();
}

QWidget* QtUi::parentWindow() const {
    if (QWidget* active = QApplication::activeWindow()) return active;
    return host_->mainWindow();
}

std::string QtUi::titleOr(const std::string& title) const {
    if (!title.empty()) return title;
    try {
        return Runtime::Current().Title();
    } catch (...) {
        return {};
    }
}

int QtUi::MsgBox(const std::string& prompt, int buttons, const std::string& title) {
    QMessageBox box(parentWindow());
    box.setWindowTitle(qs(titleOr(title)));
    box.setTextFormat(Qt::PlainText);
    box.setText(shown(prompt));
    switch (buttons & 0x70) {
        case vb::vbCritical:
            box.setIcon(QMessageBox::Critical);
            break;
        case vb::vbQuestion:
            box.setIcon(QMessageBox::Question);
            break;
        case vb::vbExclamation:
            box.setIcon(QMessageBox::Warning);
            break;
        case vb::vbInformation:
            box.setIcon(QMessageBox::Information);
            break;
        default:
            break;
    }
    struct Choice {
        QMessageBox::StandardButton button;
        int answer;
    };
    std::vector<Choice> choices;
    switch (buttons & 7) {
        case vb::vbOKCancel:
            choices = {{QMessageBox::Ok, vb::vbOK}, {QMessageBox::Cancel, vb::vbCancel}};
            break;
        case vb::vbAbortRetryIgnore:
            choices = {{QMessageBox::Abort, vb::vbAbort},
                       {QMessageBox::Retry, vb::vbRetry},
                       {QMessageBox::Ignore, vb::vbIgnore}};
            break;
        case vb::vbYesNoCancel:
            choices = {{QMessageBox::Yes, vb::vbYes},
                       {QMessageBox::No, vb::vbNo},
                       {QMessageBox::Cancel, vb::vbCancel}};
            break;
        case vb::vbYesNo:
            choices = {{QMessageBox::Yes, vb::vbYes}, {QMessageBox::No, vb::vbNo}};
            break;
        case vb::vbRetryCancel:
            choices = {{QMessageBox::Retry, vb::vbRetry}, {QMessageBox::Cancel, vb::vbCancel}};
            break;
        default:
            choices = {{QMessageBox::Ok, vb::vbOK}};
            break;
    }
    QMessageBox::StandardButtons set;
    for (const Choice& c : choices)
        set |= c.button;
    box.setStandardButtons(set);
    const std::size_t first = static_cast<std::size_t>((buttons >> 8) & 3);
    box.setDefaultButton(choices[first < choices.size() ? first : 0].button);
    box.exec();
    const auto clicked = box.standardButton(box.clickedButton());
    for (const Choice& c : choices)
        if (c.button == clicked) return c.answer;
    // Closed by the window's box: the cancelling answer, or the only one.
    return choices.size() == 1            ? choices[0].answer
           : (buttons & 7) == vb::vbYesNo ? vb::vbNo
                                          : vb::vbCancel;
}

std::string QtUi::InputBox(const std::string& prompt, const std::string& title,
                           const std::string& defaultText) {
    QInputDialog dialog(parentWindow());
    dialog.setWindowTitle(qs(titleOr(title)));
    dialog.setLabelText(shown(prompt));
    dialog.setTextValue(qs(defaultText));
    if (dialog.exec() != QDialog::Accepted) return {};
    return dialog.textValue().toStdString();
}

QStringList QtUi::nameFilters(const std::string& filter) {
    QStringList parts = qs(filter).split('|');
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString name = parts[i].trimmed();
        QString patterns = parts[i + 1].trimmed();
        patterns.replace(';', ' ');
        // A name that already ends with its patterns in brackets keeps them once.
        const int open = name.lastIndexOf('(');
        if (open >= 0 && name.endsWith(')')) {
            QString inside = name.mid(open + 1, name.size() - open - 2);
            inside.replace(';', ' ');
            if (inside.simplified() == patterns.simplified()) {
                filters << name.left(open).trimmed() + " (" + patterns + ")";
                continue;
            }
        }
        filters << (name.isEmpty() ? patterns : name) + " (" + patterns + ")";
    }
    return filters;
}

bool QtUi::fileDialog(CommonDialog& dialog, bool save) {
    QFileDialog files(parentWindow());
    files.setWindowTitle(
        qs(dialog.DialogTitle.empty() ? (save ? "Save As" : "Open") : dialog.DialogTitle));
    files.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    files.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    files.setOption(QFileDialog::DontUseNativeDialog);
    const QStringList filters = nameFilters(dialog.Filter);
    if (!filters.isEmpty()) {
        files.setNameFilters(filters);
        const int index = std::clamp(dialog.FilterIndex, 1, static_cast<int>(filters.size()));
        files.selectNameFilter(filters[index - 1]);
    }
    if (!dialog.InitDir.empty()) files.setDirectory(qs(dialog.InitDir));
    if (!dialog.DefaultExt.empty()) files.setDefaultSuffix(qs(dialog.DefaultExt));
    if (save && !(dialog.Flags & 2)) files.setOption(QFileDialog::DontConfirmOverwrite);
    if (!dialog.FileName.empty()) files.selectFile(qs(dialog.FileName));
    if (files.exec() != QDialog::Accepted || files.selectedFiles().isEmpty()) return false;
    dialog.FileName = files.selectedFiles().front().toStdString();
    if (!filters.isEmpty())
        dialog.FilterIndex = static_cast<int>(filters.indexOf(files.selectedNameFilter())) + 1;
    return true;
}

void QtUi::ShowReport(const ReportWindow& report) {
    // The same window for every report: a further one sets it up anew.
    if (!reportView_) reportView_ = new ReportView();
    reportView_->present(report);
}

bool QtUi::ShowOpen(CommonDialog& dialog) {
    return fileDialog(dialog, false);
}
bool QtUi::ShowSave(CommonDialog& dialog) {
    return fileDialog(dialog, true);
}

bool QtUi::ShowFont(CommonDialog& dialog) {
    QDialog box(parentWindow());
    box.setWindowTitle(qs(dialog.DialogTitle.empty() ? "Font" : dialog.DialogTitle));
    auto* layout = new QVBoxLayout(&box);
    auto* fonts = new QFontDialog(&box);
    fonts->setOptions(QFontDialog::NoButtons);
    fonts->setWindowFlags(Qt::Widget);
    QFont font(qs(dialog.FontName));
    if (dialog.FontSize > 0) font.setPointSizeF(dialog.FontSize);
    font.setBold(dialog.FontBold);
    font.setItalic(dialog.FontItalic);
    font.setUnderline(dialog.FontUnderline);
    font.setStrikeOut(dialog.FontStrikethru);
    fonts->setCurrentFont(font);
    layout->addWidget(fonts);
    // The colour of the text, which the classic font dialog offers beside the font.
    QColor colour = fromClassic(dialog.Color);
    auto* colourButton = new QPushButton(QObject::tr("Colour..."), &box);
    auto paint = [colourButton, &colour] {
        QPixmap swatch(16, 16);
        swatch.fill(colour);
        colourButton->setIcon(QIcon(swatch));
    };
    paint();
    QObject::connect(colourButton, &QPushButton::clicked, &box, [&] {
        QColor chosen = QColorDialog::getColor(colour, &box);
        if (chosen.isValid()) colour = chosen;
        paint();
    });
    layout->addWidget(colourButton, 0, Qt::AlignLeft);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &box);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &box, &QDialog::reject);
    layout->addWidget(buttons);
    fonts->show();
    if (box.exec() != QDialog::Accepted) return false;
    const QFont chosen = fonts->currentFont();
    dialog.FontName = chosen.family().toStdString();
    dialog.FontSize = chosen.pointSizeF();
    dialog.FontBold = chosen.bold();
    dialog.FontItalic = chosen.italic();
    dialog.FontUnderline = chosen.underline();
    dialog.FontStrikethru = chosen.strikeOut();
    dialog.Color = toClassic(colour);
    return true;
}

bool QtUi::ShowColor(CommonDialog& dialog) {
    const QColor chosen =
        QColorDialog::getColor(fromClassic(dialog.Color), parentWindow(),
                               qs(dialog.DialogTitle.empty() ? "Color" : dialog.DialogTitle));
    if (!chosen.isValid()) return false;
    dialog.Color = toClassic(chosen);
    return true;
}

Control* QtUi::PopupMenu(Form& form, const std::string& menuName) {
    // The items of the menu: the menus it holds, or else the elements of its array.
    std::vector<Control*> items;
    for (const auto& c : form.Controls())
        if (c->Kind() == ControlKind::Menu && sameName(c->Container(), menuName))
            items.push_back(c.get());
    if (items.empty())
        for (const auto& c : form.Controls())
            if (c->Kind() == ControlKind::Menu && sameName(c->Name(), menuName) && c->Index() >= 0)
                items.push_back(c.get());
    QMenu menu(parentWindow());
    std::map<QAction*, Control*> chosen;
    for (Control* item : items) {
        if (!item->Visible()) continue;
        const QString caption = qs(item->Caption());
        if (caption == "-") {
            menu.addSeparator();
            continue;
        }
        QAction* action = menu.addAction(caption);
        action->setEnabled(item->Enabled());
        if (item->HasProperty("Checked") && CBool(item->Property("Checked"))) {
            action->setCheckable(true);
            action->setChecked(true);
        }
        chosen[action] = item;
    }
    if (chosen.empty()) return nullptr;
    QAction* picked = menu.exec(QCursor::pos());
    rethrowIfEnded();
    auto it = chosen.find(picked);
    return it == chosen.end() ? nullptr : it->second;
}

WebPane& QtUi::webPane(Form& form, const std::string& controlName) {
    std::string key = controlName;
    for (char& ch : key)
        ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    auto& pane = panes_[{&form, key}];
    if (!pane) pane = std::make_unique<WebPane>();
    return *pane;
}

void QtUi::keepPanesOf(const std::vector<Form*>& live) {
    std::erase_if(panes_, [&](const auto& entry) {
        return std::find(live.begin(), live.end(), entry.first.first) == live.end();
    });
}

Pane& QtUi::PaneFor(Form& form, const std::string& controlName) {
    return webPane(form, controlName);
}

void QtUi::RunDocument(const std::string& path) {
    const QString text = qs(path);
    QDesktopServices::openUrl(text.startsWith('/') ? QUrl::fromLocalFile(text)
                                                   : QUrl::fromUserInput(text));
}

void QtUi::MousePointerChanged(int pointer) {
    constexpr int vbArrowHourglass = 13;
    const bool wait = pointer == vb::vbHourglass || pointer == vbArrowHourglass;
    if (wait && !busy_) {
        QApplication::setOverrideCursor(pointer == vb::vbHourglass ? Qt::WaitCursor
                                                                   : Qt::BusyCursor);
        busy_ = true;
    } else if (!wait && busy_) {
        QApplication::restoreOverrideCursor();
        busy_ = false;
    }
}

void QtUi::FormShown(Form& form, bool modal) {
    host_->shown(form, modal);
}

void QtUi::FormHidden(Form& form) {
    host_->hidden(form);
}

void QtUi::LetEventsRun() {
    RowsAwaited::showAll();
    QApplication::processEvents(QEventLoop::AllEvents);
    rethrowIfEnded();
}

void QtUi::WaitForUser() {
    QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    rethrowIfEnded();
}

}  // namespace desktop
