#include "forms/headless_pane.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "base/files.h"
#include "base/fold.h"
#include "base/kept_listings.h"
#include "base/strings.h"
#include "base/vb_error.h"

namespace {

// The whole of a file, or "" when it cannot be read (gone since it was shown).
std::string readFile(const std::string& path) {
    SettleWrites();
    std::string text;
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return text;
    struct stat info {};
    if (::fstat(fd, &info) == 0) ReadToEnd(fd, static_cast<std::size_t>(info.st_size), text);
    ::close(fd);
    return text;
}

}  // namespace

std::string HeadlessPane::localPath(const std::string& url) {
    // The scheme is plain ASCII: its seven characters are the address's first seven bytes.
    if (equalFolded(std::string_view(url).substr(0, 7), "file://")) return url.substr(7);
    if (!url.empty() && url[0] == '/') return url;
    return {};
}

void HeadlessPane::Navigate2(const std::string& url) {
    bool cancel = false;
    if (BeforeNavigate2) BeforeNavigate2(url, cancel);
    if (cancel) return;
    if (CommandStateChange) CommandStateChange();
    load(url);
}

void HeadlessPane::load(const std::string& url) {
    std::string path = localPath(url);
    if (!path.empty()) {
        if (!IsRegularFile(path)) {
            if (NavigateError) NavigateError(url);
            return;
        }
        unread_ = path;
    } else {
        unread_.clear();
    }
    document_.clear();
    history_.push_back({url});
    if (NavigateComplete2) NavigateComplete2(url);
}

void HeadlessPane::GoBack() {
    // 5, as the browser fails, when there is nothing to go back to.
    if (history_.size() < 2) throw VbError(vberr::InvalidProcedureCall, "Unspecified error");
    history_.pop_back();
    std::string url = history_.back().url;
    history_.pop_back();
    load(url);
}

void HeadlessPane::Refresh2() {
    // The reloaded page is an entry of its own, so going back returns to the page before.
    history_.push_back({LocationURL()});
    unread_.clear();
    document_.clear();
}

void HeadlessPane::draw() const {
    if (unread_.empty()) return;
    document_ = readFile(unread_);
    unread_.clear();
}

std::string HeadlessPane::DocumentText() const {
    draw();
    return document_;
}

void HeadlessPane::Write(const std::string& html) {
    draw();
    document_ += html;
}

std::string HeadlessPane::LocationURL() const {
    return history_.empty() ? std::string() : history_.back().url;
}
