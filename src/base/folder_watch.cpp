#include "base/folder_watch.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <mutex>
#include <string_view>
#include <vector>

namespace {

// A folder is watched from its fourth look-up in a row: a walk through many small folders
// pays for no watch.
constexpr int LookupsBeforeWatching = 4;

// Set by the notice, cleared when the notices are read.
volatile std::sig_atomic_t noticed = 0;

void onNotice(int) {
    noticed = 1;
}

constexpr std::uint32_t AlongPath = IN_ATTRIB | IN_CREATE | IN_DELETE | IN_MOVED_FROM |
                                    IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr std::uint32_t FolderItself = IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
// Any of these means the path may no longer lead where it did.
constexpr std::uint32_t Always =
    IN_Q_OVERFLOW | IN_IGNORED | IN_UNMOUNT | IN_DELETE_SELF | IN_MOVE_SELF;

bool lookUp(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

class Watch {
  public:
    bool isFolder(const std::string& path) {
        std::lock_guard<std::mutex> guard(lock_);
        if (path != path_) {
            stop();
            path_ = path;
            lookups_ = 0;
        }
        if (fd_ >= 0 && (!noticed || nothingChanged())) return true;
        stop();
        // The watch begins before the look-up: a change after it is noticed.
        if (++lookups_ >= LookupsBeforeWatching && wasFolder_) start();
        wasFolder_ = lookUp(path);
        if (!wasFolder_) stop();
        return wasFolder_;
    }

  private:
    // The folders of the path, "/" first, and the watch of each.
    struct Step {
        std::string folder, next;  // `next` is the name of the following folder in it
        int wd = -1;
    };

    void stop() {
        if (fd_ >= 0) ::close(fd_);
        fd_ = -1;
    }

    static bool ownHandler() {
        static const bool installed = [] {
            struct sigaction before {};
            // Another part of the program's own use of the signal is left alone.
            if (::sigaction(SIGIO, nullptr, &before) != 0 || (before.sa_flags & SA_SIGINFO) ||
                before.sa_handler != SIG_DFL)
                return false;
            struct sigaction mine {};
            mine.sa_handler = onNotice;
            sigemptyset(&mine.sa_mask);
            mine.sa_flags = SA_RESTART;
            return ::sigaction(SIGIO, &mine, nullptr) == 0;
        }();
        return installed;
    }

    void start() {
        if (!ownHandler()) return;
        char* real = ::realpath(path_.c_str(), nullptr);
        const bool plain = real != nullptr && path_ == real;
        std::free(real);
        if (!plain) return;
        // "/a/b": "/" watched for its entry "a", "/a" for "b", and "/a/b" itself.
        steps_.clear();
        std::string folder = "/";
        for (std::size_t at = 1; at < path_.size();) {
            const std::size_t end = std::min(path_.find('/', at), path_.size());
            steps_.push_back({folder, path_.substr(at, end - at), -1});
            folder = path_.substr(0, end);
            at = end + 1;
        }
        steps_.push_back({folder, "", -1});
        fd_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        if (fd_ < 0) return;
        noticed = 0;
        bool ok = ::fcntl(fd_, F_SETOWN, ::getpid()) == 0 &&
                  ::fcntl(fd_, F_SETFL, ::fcntl(fd_, F_GETFL) | O_ASYNC) == 0;
        for (std::size_t i = 0; ok && i < steps_.size(); ++i) {
            steps_[i].wd = ::inotify_add_watch(fd_, steps_[i].folder.c_str(),
                                               i + 1 < steps_.size() ? AlongPath : FolderItself);
            ok = steps_[i].wd >= 0;
        }
        if (!ok) stop();
    }

    // Reads the notices: true when none of them touches the path (a file made or removed
    // beside one of its folders, say).
    bool nothingChanged() {
        noticed = 0;
        alignas(inotify_event) char buffer[4096];
        for (;;) {
            const ssize_t got = ::read(fd_, buffer, sizeof buffer);
            if (got < 0) return errno == EAGAIN;
            if (got == 0) return false;
            for (ssize_t at = 0; at < got;) {
                const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
                at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
                if (touchesPath(*event)) return false;
            }
        }
    }

    bool touchesPath(const inotify_event& event) const {
        if (event.mask & Always) return true;
        for (const Step& step : steps_)
            if (step.wd == event.wd)
                // A change to the folder itself, or to the entry of the next folder.
                return event.len == 0 || std::string_view(event.name) == step.next;
        return true;
    }

    std::mutex lock_;
    std::string path_;  // the path last looked up
    int lookups_ = 0;   // of it, in a row
    bool wasFolder_ = false;
    int fd_ = -1;  // the watch of path_, while it was last a folder
    std::vector<Step> steps_;
};

}  // namespace

bool IsFolderNow(const std::string& path) {
    static Watch watch;
    return watch.isFolder(path);
}
