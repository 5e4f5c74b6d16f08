#pragma once

#include <functional>
#include <string>

// The HTML pane `Wb1`: it shows files and pages the program writes, and reports every
// navigation, the program's own and the user's, to BeforeNavigate2 with a cancel flag.
class Pane {
  public:
    virtual ~Pane() = default;

    virtual void Navigate2(const std::string& url) = 0;
    virtual void GoBack() = 0;
    // After it the page holds nothing until written.
    virtual void Refresh2() = 0;
    // Document.script.Document.Write: adds HTML to the page now in the pane.
    virtual void Write(const std::string& html) = 0;
    virtual std::string LocationURL() const = 0;
    // What the pane shows: the text written since the last blank page, or the file's
    // contents as loaded.
    virtual std::string DocumentText() const = 0;

    std::function<void(const std::string& url, bool& Cancel)> BeforeNavigate2;
    std::function<void(const std::string& url)> NavigateComplete2;
    std::function<void()> CommandStateChange;
    std::function<void(const std::string& url)> NavigateError;
};
