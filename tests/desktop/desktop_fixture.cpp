#include "desktop_fixture.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QLabel>
#include <QPixmap>
#include <QScreen>
#include <QSettings>
#include <QTest>
#include <QWebEngineView>
#include <filesystem>
#include <stdexcept>

#include "base/convert.h"
#include "desktop/form_host.h"
#include "desktop/guard.h"
#include "desktop/qt_ui.h"
#include "shell/module.h"

namespace fs = std::filesystem;
using desktop::DesktopProgram;
using desktop::FormWindow;
using desktop::WebPane;

DesktopFixture::DesktopFixture(std::string title, Folder folder, Tip tip)
    : title_(std::move(title)), tip_(tip) {
    if (folder == Folder::Empty) return;
    // The shipped program folder with the sample catalogue, copied: not the programs.
    for (const auto& entry : fs::directory_iterator(PROGRAM_FILES_DIR)) {
        const std::string name = entry.path().filename().string();
        if (name.rfind("catalogue", 0) == 0) continue;
        fs::copy(entry.path(), fs::path(appDir()) / name, fs::copy_options::recursive);
    }
}

DesktopFixture::~DesktopFixture() {
    if (tipCloser_) tipCloser_->stop();
    program_.reset();
    desktop::setEndedHandler(nullptr);
}

QString DesktopFixture::settingsFile() const {
    return QDir(settings_.path()).filePath(QString::fromStdString(title_) + ".ini");
}

void DesktopFixture::setting(const QString& section, const QString& key, const QString& value) {
    QSettings s(settingsFile(), QSettings::IniFormat);
    s.setValue(section + "/" + key, value);
}

QString DesktopFixture::saved(const QString& section, const QString& key) {
    QSettings s(settingsFile(), QSettings::IniFormat);
    return s.value(section + "/" + key, "<none>").toString();
}

void DesktopFixture::start() {
    program_ = std::make_unique<DesktopProgram>(appDir(), title_, settings_.path());
    ended_ = false;
    desktop::setEndedHandler([this] { ended_ = true; });
    if (tip_ == Tip::Left) {
        started_ = program_->start();
        return;
    }
    tipCloser_ = std::make_unique<QTimer>();
    QObject::connect(tipCloser_.get(), &QTimer::timeout, [this] {
        Form* tip = program_->runtime().Loaded("frmTip");
        QWidget* ok = tip ? widget(*tip, "cmdOK") : nullptr;
        if (ok && ok->isVisible()) {
            tipSeen_ = true;
            tipOkShows_ = !ok->visibleRegion().isEmpty();
            QTest::mouseClick(ok, Qt::LeftButton);
        }
    });
    tipCloser_->start(100);
    started_ = program_->start();
    tipCloser_->stop();
}

Products& DesktopFixture::form() {
    return *Mod().MainForm;
}

FormWindow& DesktopFixture::window(const Form& f) {
    FormWindow* w = program_->ui().host().windowOf(f);
    if (!w) throw std::runtime_error("no window for " + f.Name());
    return *w;
}

QWidget* DesktopFixture::widget(const Form& f, const std::string& name, int index) {
    FormWindow* w = program_->ui().host().windowOf(f);
    Control* c = f.Find(name, index);
    return w && c ? w->widgetFor(*c) : nullptr;
}

WebPane& DesktopFixture::pane() {
    return program_->ui().webPane(form(), "Wb1");
}

std::string DesktopFixture::stockNo() {
    return textOf(form().adoPrimaryRS->Fields("StockNo").Value());
}

QString DesktopFixture::status() {
    auto* label = qobject_cast<QLabel*>(widget(form(), "lblStatus"));
    return label ? label->text() : QString();
}

bool DesktopFixture::waitFor(const std::function<bool()>& done, int timeout) {
    QElapsedTimer clock;
    clock.start();
    // The wait sleeps until the next event (a page loaded, a paint, a reply of the page's
    // script) and looks again; the heartbeat only wakes it for what comes without an event,
    // such as a file the program wrote, and for the deadline.
    QTimer heartbeat;
    heartbeat.start(50);
    while (!done()) {
        if (clock.elapsed() > timeout) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

QString DesktopFixture::shownHtml() {
    QString html;
    bool done = false;
    pane().page()->toHtml([&](const QString& text) {
        html = text;
        done = true;
    });
    return waitFor([&] { return done; }, Patience) ? html : QString();
}

QVariant DesktopFixture::script(const QString& code) {
    QVariant result;
    bool done = false;
    pane().page()->runJavaScript(code, [&](const QVariant& v) {
        result = v;
        done = true;
    });
    return waitFor([&] { return done; }, Patience) ? result : QVariant();
}

bool DesktopFixture::paneShows(const QString& text) {
    return waitFor(
        [&] {
            if (!waitFor([&] { return !pane().busy(); }, Patience)) return false;
            return shownHtml().contains(text);
        },
        Patience);
}

QRect DesktopFixture::pageBox(const QString& code) {
    const QVariantList r = script(code).toList();
    if (r.size() != 4) return {};
    return QRect(r[0].toInt(), r[1].toInt(), r[2].toInt(), r[3].toInt());
}

void DesktopFixture::clickInPane(QPoint at) {
    QWidget* surface = pane().view()->focusProxy() ? pane().view()->focusProxy() : pane().view();
    QTest::mouseClick(surface, Qt::LeftButton, {}, at);
}

bool DesktopFixture::clickInPage(const QString& selector) {
    const QRect box = pageBox("(() => { const e = document.querySelector(\"" + selector +
                              "\"); if (!e) return []; const b = e.getBoundingClientRect();"
                              " return [b.x, b.y, b.width, b.height]; })()");
    if (box.isEmpty()) return false;
    clickInPane(box.center());
    return true;
}

bool DesktopFixture::paneShowsPicture() {
    return waitFor(
        [&] {
            return script("document.images.length > 0 && document.images[0].naturalWidth > 0")
                .toBool();
        },
        Patience);
}

bool DesktopFixture::photograph(QWidget* window, const QString& path) {
    const QPixmap shot = QGuiApplication::platformName() == "xcb"
                             ? window->screen()->grabWindow(window->winId())
                             : window->grab();
    return !shot.isNull() && shot.save(path);
}

bool DesktopFixture::showsLink(const QString& href) {
    return !pane().busy() &&
           script(QString("Array.from(document.links).some(a => a.getAttribute('href') === '%1')")
                      .arg(href))
               .toBool();
}

int main(int argc, char** argv) {
    // Build machines seldom offer the user namespaces the renderer's sandbox needs.
    if (qEnvironmentVariableIsEmpty("QTWEBENGINE_DISABLE_SANDBOX"))
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    desktop::prepareProcess();
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        qputenv("QT_LOGGING_RULES", "qt.webenginecontext.debug=false");
    QApplication app(argc, argv);
    desktop::styleApplication(app);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
