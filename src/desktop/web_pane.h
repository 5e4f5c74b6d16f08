#pragma once

#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QWebEnginePage>
#include <functional>
#include <string>
#include <vector>

#include "records/pane.h"

#include <QWebEngineView>
class QWebEngineLoadingInfo;

namespace desktop {

// The page of the pane: it hands every navigation request to the pane before it happens.
class WebPage : public QWebEnginePage {
    Q_OBJECT
  public:
    using QWebEnginePage::QWebEnginePage;
    std::function<bool(const QUrl&, NavigationType, bool mainFrame)> onRequest;

  protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage* createWindow(WebWindowType type) override;
};

// The HTML pane on Qt WebEngine. The program's own navigations (Navigate2) and the user's
// (link clicks) both reach BeforeNavigate2 before they happen, and either may be cancelled.
// A page written into about:blank is served under the scheme "catalogue-blank", which
// stands for about:blank: a bare link word on it resolves to "catalogue-blank:/WORD" and is
// reported as "about:blank" + WORD. Local files are shown by file URL and reported as plain
// paths, so that a generated page's absolute picture paths show.
class WebPane : public QObject, public Pane {
    Q_OBJECT
  public:
    WebPane();
    ~WebPane() override;

    // Once, before the QApplication is made.
    static void registerScheme();
    static constexpr const char* Scheme = "catalogue-blank";

    void Navigate2(const std::string& url) override;
    void GoBack() override;
    void Refresh2() override;
    void Write(const std::string& html) override;
    std::string LocationURL() const override { return location_; }
    std::string DocumentText() const override { return document_; }

    QWebEngineView* view() const { return view_; }
    WebPage* page() const { return page_; }
    // The text written since the last blank page, for the scheme's handler.
    const std::string& written() const { return document_; }
    // Whether a page is still loading (tests wait on it).
    bool busy() const { return loading_ || showPending_; }

    // The address as the program sees it: a written page's link as "about:blank" + word, a
    // local file as its path, anything else as it stands.
    static std::string reported(const QUrl& url);
    // The address to load for an address the program gives.
    static QUrl target(const std::string& url);

  signals:
    void shown();

  private:
    struct Entry {
        std::string url;
        bool written;
        std::string document;
    };
    bool request(const QUrl& url, QWebEnginePage::NavigationType type, bool mainFrame);
    void follow(const QUrl& url);
    void open(const std::string& url);
    void show(const Entry& entry);
    void showWritten();
    void loadingChanged(const QWebEngineLoadingInfo& info);

    QPointer<QWebEngineView> view_;
    WebPage* page_ = nullptr;
    std::vector<Entry> history_;
    std::string location_;
    std::string document_;
    bool written_ = false;
    bool reloaded_ = false;  // the awaited load was started again after a false end
    bool awaiting_ = false;  // a navigation whose end raises NavigateComplete2 or NavigateError
    bool loading_ = false;
    bool showPending_ = false;
};

}  // namespace desktop
