#include "desktop/web_pane.h"

#include <QBuffer>
#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QTimer>
#include <QWebEngineDownloadRequest>
#include <QWebEngineLoadingInfo>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>
#include <QWebEngineUrlSchemeHandler>
#include <QWebEngineView>
#include <algorithm>
#include <cctype>
#include <fstream>
#include <sstream>

#include "base/kept_listings.h"
#include "base/vb_error.h"
#include "desktop/guard.h"

namespace desktop {

namespace {

const QString blankBase = QString::fromLatin1(WebPane::Scheme) + QStringLiteral(":/");

// The pane whose written page the scheme's handler serves: the last one that showed one.
WebPane* currentWriter = nullptr;

bool startsNoCase(const std::string& s, const std::string& prefix) {
    return s.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), s.begin(), [](char a, char b) {
               return std::tolower(static_cast<unsigned char>(a)) ==
                      std::tolower(static_cast<unsigned char>(b));
           });
}

// Serves the pages of the blank scheme: the root is the page written into the pane; a path
// that names a local file is that file (a written page's absolute picture paths); any other
// word is an empty page.
class BlankSchemeHandler : public QWebEngineUrlSchemeHandler {
  public:
    using QWebEngineUrlSchemeHandler::QWebEngineUrlSchemeHandler;
    void requestStarted(QWebEngineUrlRequestJob* job) override {
        const QString path = job->requestUrl().path();
        auto* buffer = new QBuffer(job);
        QByteArray mime = "text/html";
        if (path.isEmpty() || path == QStringLiteral("/")) {
            if (currentWriter) buffer->setData(QByteArray::fromStdString(currentWriter->written()));
        } else if (QFileInfo info(path); info.isAbsolute() && info.isFile()) {
            QFile file(path);
            if (file.open(QIODevice::ReadOnly)) buffer->setData(file.readAll());
            mime = QMimeDatabase().mimeTypeForFile(info).name().toLatin1();
        }
        buffer->open(QIODevice::ReadOnly);
        job->reply(mime, buffer);
    }
};

void prepareProfile(QWebEngineProfile* profile) {
    static bool done = false;
    if (done) return;
    done = true;
    profile->installUrlSchemeHandler(WebPane::Scheme, new BlankSchemeHandler(profile));
    // A file the pane cannot show (a program, a document) goes to the desktop's opener, as the
    // classic browser runs or offers it.
    QObject::connect(profile, &QWebEngineProfile::downloadRequested,
                     [](QWebEngineDownloadRequest* download) {
                         if (download->url().isLocalFile())
                             QDesktopServices::openUrl(download->url());
                         download->cancel();
                     });
}

std::string readPage(const std::string& path) {
    SettleWrites();  // the engine reads the page from disk next
    // Only pages: a media file is not read into memory.
    const QFileInfo info(QString::fromStdString(path));
    const QString suffix = info.suffix().toLower();
    if (!info.isFile() || info.size() > (8 << 20) ||
        !(suffix == "htm" || suffix == "html" || suffix == "txt"))
        return {};
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

bool WebPage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) {
    return onRequest ? onRequest(url, type, isMainFrame) : true;
}

QWebEnginePage* WebPage::createWindow(WebWindowType) {
    // A link that opens a new window opens in the pane.
    return this;
}

void WebPane::registerScheme() {
    QWebEngineUrlScheme scheme(Scheme);
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Path);
    scheme.setFlags(QWebEngineUrlScheme::LocalScheme | QWebEngineUrlScheme::LocalAccessAllowed);
    QWebEngineUrlScheme::registerScheme(scheme);
}

WebPane::WebPane() {
    QWebEngineProfile* profile = QWebEngineProfile::defaultProfile();
    prepareProfile(profile);
    page_ = new WebPage(profile, this);
    page_->settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, true);
    page_->settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    page_->onRequest = [this](const QUrl& url, QWebEnginePage::NavigationType type, bool main) {
        return request(url, type, main);
    };
    // The classic browser shows a picture given only as "dynsrc"; so does the pane.
    QWebEngineScript dynsrc;
    dynsrc.setName(QStringLiteral("dynsrc"));
    dynsrc.setInjectionPoint(QWebEngineScript::DocumentReady);
    dynsrc.setWorldId(QWebEngineScript::ApplicationWorld);
    dynsrc.setSourceCode(
        QStringLiteral("for (const i of document.querySelectorAll('img[dynsrc]'))"
                       "  if (!i.getAttribute('src')) i.src = i.getAttribute('dynsrc');"));
    page_->scripts().insert(dynsrc);
    connect(page_, &QWebEnginePage::loadStarted, this, [this] { loading_ = true; });
    connect(page_, &QWebEnginePage::loadFinished, this, [this] { loading_ = false; });
    connect(page_, &QWebEnginePage::loadingChanged, this, &WebPane::loadingChanged);
    view_ = new QWebEngineView;
    view_->setPage(page_);
}

WebPane::~WebPane() {
    if (currentWriter == this) currentWriter = nullptr;
    delete view_.data();
    delete page_;
}

std::string WebPane::reported(const QUrl& url) {
    if (url.scheme() == QLatin1String(Scheme)) {
        QString rest = url.toString().mid(QString::fromLatin1(Scheme).size() + 1);
        if (rest.startsWith('/')) rest.remove(0, 1);
        return "about:blank" + QUrl::fromPercentEncoding(rest.toUtf8()).toStdString();
    }
    if (url.isLocalFile()) return url.toLocalFile().toStdString();
    return url.toString().toStdString();
}

QUrl WebPane::target(const std::string& url) {
    if (startsNoCase(url, "about:blank"))
        return QUrl(blankBase + QString::fromStdString(url.substr(11)));
    const QString text = QString::fromStdString(url);
    if (text.startsWith('/')) return QUrl::fromLocalFile(text);
    const QUrl parsed(text);
    if (!parsed.scheme().isEmpty() && parsed.scheme().size() > 1) return parsed;
    return QUrl::fromUserInput(text);
}

bool WebPane::request(const QUrl& url, QWebEnginePage::NavigationType type, bool mainFrame) {
    switch (type) {
        case QWebEnginePage::NavigationTypeTyped:
        case QWebEnginePage::NavigationTypeReload:
        case QWebEnginePage::NavigationTypeBackForward:
        case QWebEnginePage::NavigationTypeRedirect:
            // The program's own loads, already past BeforeNavigate2.
            return true;
        default:
            break;
    }
    if (!mainFrame) {
        // A link inside a frame of a page: the router decides on the spot.
        bool cancel = false;
        const std::string address = reported(url);
        guarded([&] {
            if (BeforeNavigate2) BeforeNavigate2(address, cancel);
        });
        return !cancel;
    }
    // A user's navigation: the router runs after the page's own event has returned, and the
    // navigation happens only if it was not cancelled.
    QTimer::singleShot(0, this, [this, url] { guarded([&] { follow(url); }); });
    return false;
}

void WebPane::follow(const QUrl& url) {
    const std::string address = reported(url);
    bool cancel = false;
    if (BeforeNavigate2) BeforeNavigate2(address, cancel);
    if (cancel) return;
    if (CommandStateChange) CommandStateChange();
    // The page began the link's own navigation before the program declined it; stopped now,
    // its end is reported before the program's load starts and cannot pass for the end of it.
    page_->triggerAction(QWebEnginePage::Stop);
    open(address);
}

void WebPane::Navigate2(const std::string& url) {
    bool cancel = false;
    if (BeforeNavigate2) BeforeNavigate2(url, cancel);
    if (cancel) return;
    if (CommandStateChange) CommandStateChange();
    open(url);
}

void WebPane::open(const std::string& url) {
    if (!history_.empty() && history_.back().written) history_.back().document = document_;
    if (url.size() == 11 && startsNoCase(url, "about:blank")) {
        written_ = true;
        document_.clear();
        location_ = url;
        awaiting_ = false;
        history_.push_back({url, true, {}});
        showWritten();
        if (NavigateComplete2) NavigateComplete2(url);
        return;
    }
    written_ = false;
    location_ = url;
    const QUrl address = target(url);
    document_ = address.isLocalFile() ? readPage(address.toLocalFile().toStdString()) : "";
    history_.push_back({url, false, {}});
    awaiting_ = true;
    reloaded_ = false;
    loading_ = true;
    page_->load(address);
}

void WebPane::show(const Entry& entry) {
    if (!entry.written) {
        open(entry.url);
        return;
    }
    if (!history_.empty() && history_.back().written) history_.back().document = document_;
    written_ = true;
    location_ = entry.url;
    document_ = entry.document;
    history_.push_back(entry);
    showWritten();
}

void WebPane::GoBack() {
    // 5, as the browser fails, when there is nothing to go back to.
    if (history_.size() < 2) throw VbError(vberr::InvalidProcedureCall, "Unspecified error");
    history_.pop_back();
    Entry previous = history_.back();
    history_.pop_back();
    show(previous);
}

void WebPane::Refresh2() {
    // The page is emptied in place: the address stays, and what is written next shows.
    if (!history_.empty() && history_.back().written) history_.back().document = document_;
    history_.push_back({location_, true, {}});
    written_ = true;
    awaiting_ = false;
    document_.clear();
    showWritten();
}

void WebPane::Write(const std::string& html) {
    if (!written_) {
        // Writing into a loaded page starts a new document, as the browser's write does.
        written_ = true;
        awaiting_ = false;
        document_.clear();
        if (!history_.empty()) history_.back().written = true;
    }
    document_ += html;
    showWritten();
}

void WebPane::showWritten() {
    // The lines written in one go are shown together, when the event queue next runs.
    if (showPending_) return;
    showPending_ = true;
    QTimer::singleShot(0, this, [this] {
        showPending_ = false;
        if (!written_) return;
        currentWriter = this;
        loading_ = true;
        page_->load(QUrl(blankBase));
    });
}

void WebPane::loadingChanged(const QWebEngineLoadingInfo& info) {
    if (info.status() == QWebEngineLoadingInfo::LoadStartedStatus || info.isErrorPage()) return;
    const QUrl url = info.url();
    if (url.scheme() == QLatin1String(Scheme) && (url.path().isEmpty() || url.path() == "/")) {
        if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus) emit shown();
        return;
    }
    if (awaiting_ && !reloaded_ && info.status() == QWebEngineLoadingInfo::LoadFailedStatus &&
        info.errorCode() == 0) {
        // An end without any error is a late end of a declined link's navigation, and the
        // browser then reports nothing of the program's own load: it is loaded once more.
        reloaded_ = true;
        loading_ = true;
        page_->load(target(location_));
        return;
    }
    if (!awaiting_ || info.status() == QWebEngineLoadingInfo::LoadStoppedStatus) return;
    if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus) {
        awaiting_ = false;
        emit shown();
        const std::string address = location_;
        guarded([&] {
            if (NavigateComplete2) NavigateComplete2(address);
        });
    } else if (info.status() == QWebEngineLoadingInfo::LoadFailedStatus) {
        // An aborted load was replaced by another one; only a real failure is reported.
        if (info.errorCode() == -3) return;
        awaiting_ = false;
        const std::string address = location_;
        guarded([&] {
            if (NavigateError) NavigateError(address);
        });
    }
}

}  // namespace desktop
