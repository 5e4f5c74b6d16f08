#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <set>
#include <sstream>
#include <string>

#include "base/convert.h"
#include "catalogue_fixture.h"
#include "store/sqlite_file.h"

namespace {

using Clock = std::chrono::steady_clock;

// Runs the writer on the catalogue and kills it with SIGKILL `after` its first saved row;
// the stock numbers it printed, whole lines only.
std::vector<std::string> saveUntilKilled(const std::string& catalogue, const std::string& prefix,
                                         std::chrono::milliseconds after) {
    int out[2];
    if (pipe(out) != 0) return {};
    pid_t pid = fork();
    if (pid == 0) {
        dup2(out[1], STDOUT_FILENO);
        close(out[0]);
        close(out[1]);
        execl(KILL_WRITER, KILL_WRITER, catalogue.c_str(), prefix.c_str(), "100000", nullptr);
        _exit(127);
    }
    close(out[1]);
    std::string text;
    char buffer[65536];
    Clock::time_point killAt = Clock::time_point::max();
    bool killed = false;
    for (;;) {
        if (!killed && Clock::now() >= killAt) {
            kill(pid, SIGKILL);
            killed = true;
        }
        pollfd p{out[0], POLLIN, 0};
        if (poll(&p, 1, 5) < 0) break;
        if (!(p.revents & (POLLIN | POLLHUP))) continue;
        ssize_t n = read(out[0], buffer, sizeof buffer);
        if (n <= 0) break;
        text.append(buffer, static_cast<std::size_t>(n));
        if (killAt == Clock::time_point::max()) killAt = Clock::now() + after;
    }
    close(out[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
        << "the writer ended by itself, status " << status;
    std::vector<std::string> saved;
    std::istringstream lines(text.substr(0, text.rfind('\n') + 1));
    for (std::string line; std::getline(lines, line);)
        saved.push_back(line);
    return saved;
}

TEST(KilledWhileSaving, EveryAcknowledgedRowSurvivesAndTheFileStaysWhole) {
    TempCatalogue cat;
    std::mt19937 random(std::random_device{}());
    std::uniform_int_distribution<int> delay(0, 400);
    std::vector<std::string> acknowledged;
    for (int round = 0; round < 10; ++round) {
        auto saved = saveUntilKilled(cat.path(), "K" + std::to_string(round) + "-",
                                     std::chrono::milliseconds(delay(random)));
        ASSERT_FALSE(saved.empty()) << "round " << round;
        acknowledged.insert(acknowledged.end(), saved.begin(), saved.end());
        auto file = SqliteFile::open(cat.path());
        ASSERT_EQ(file->firstColumnJoined("PRAGMA integrity_check"), "ok") << "round " << round;
    }
    std::set<std::string> stored;
    for (const auto& v : SqliteFile::open(cat.path())->firstColumn("SELECT StockNo FROM Products"))
        stored.insert(v.text);
    std::size_t lost = 0;
    for (const auto& stockNo : acknowledged)
        lost += stored.count(stockNo) == 0;
    EXPECT_EQ(lost, 0u) << "of " << acknowledged.size() << " acknowledged rows";
}

}  // namespace
