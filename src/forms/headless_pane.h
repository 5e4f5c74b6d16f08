#pragma once

#include <string>
#include <vector>

#include "records/pane.h"

// The pane without a screen, behaving as a browser would, synchronously: every navigation
// first raises BeforeNavigate2; unless cancelled it raises CommandStateChange, loads the
// address (a local file is read; a missing one raises NavigateError instead of completing;
// anything else completes empty) and raises NavigateComplete2. Each completed navigation is
// one history entry.
class HeadlessPane : public Pane {
  public:
    void Navigate2(const std::string& url) override;
    void GoBack() override;
    void Refresh2() override;
    void Write(const std::string& html) override;
    std::string LocationURL() const override;
    std::string DocumentText() const override { return document_; }

    // A user follows a link: the address as the pane reports it.
    void UserNavigate(const std::string& url) { Navigate2(url); }
    // A bare link word written in a page resolves against the blank page.
    static std::string resolveLink(const std::string& word) { return "about:blank" + word; }

  private:
    // A local path, or "" when the address names no file.
    static std::string localPath(const std::string& url);
    void load(const std::string& url);

    struct Entry {
        std::string url;
    };
    std::vector<Entry> history_;
    std::string document_;
};
