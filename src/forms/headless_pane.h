#pragma once

#include <string>
#include <vector>

#include "records/pane.h"

// The pane without a screen, behaving as a browser would, synchronously: every navigation
// first raises BeforeNavigate2; unless cancelled it raises CommandStateChange, loads the
// address (a local file is read; a missing one raises NavigateError instead of completing;
// anything else completes empty) and raises NavigateComplete2. Each completed navigation is
// one history entry. A file is found at once but read when its text is first wanted, as a
// browser draws a page when it gets to it: an item view shown once for each product of a
// long run then costs one lookup, and only the page left showing is read.
class HeadlessPane : public Pane {
  public:
    void Navigate2(const std::string& url) override;
    void GoBack() override;
    void Refresh2() override;
    void Write(const std::string& html) override;
    std::string LocationURL() const override;
    std::string DocumentText() const override;

    // A user follows a link: the address as the pane reports it.
    void UserNavigate(const std::string& url) { Navigate2(url); }
    // A bare link word written in a page resolves against the blank page.
    static std::string resolveLink(const std::string& word) { return "about:blank" + word; }

  private:
    // A local path, or "" when the address names no file.
    static std::string localPath(const std::string& url);
    void load(const std::string& url);
    // Reads the file navigated to, when it has not been read yet.
    void draw() const;

    struct Entry {
        std::string url;
    };
    std::vector<Entry> history_;
    mutable std::string document_;
    mutable std::string unread_;  // the file shown but not read yet
};
