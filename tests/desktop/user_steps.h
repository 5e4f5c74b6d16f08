// A user who acts on what the screen shows: each step waits until it is ready (a box with
// its prompt, a window, a link in the pane), then acts with the real mouse and keys. The
// steps play from a timer of the event loop, so they also run inside the program's own
// waits and dialogs, which a test's own code cannot reach while the program waits.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <string>
#include <vector>

class UserSteps {
  public:
    // giveUpMs: how long one step may wait before the test program ends. A step that never
    // comes leaves the program waiting inside a click out of the test's reach, so ending is
    // the only way out; the step waited for is printed.
    explicit UserSteps(int giveUpMs);
    ~UserSteps();

    // The user acts once `ready` holds, and again at each tick until `taken` holds.
    void then(std::string what, std::function<bool()> ready, std::function<void()> act,
              std::function<bool()> taken = {});
    // A message box whose prompt begins with `prompt`: the user clicks the button.
    void answerBox(const QString& prompt, QMessageBox::StandardButton button);
    // An input box whose prompt begins with `prompt`: the user types the answer and presses
    // Enter. An empty answer keeps what the box offers.
    void answerInput(const QString& prompt, const QString& answer);
    // An open or save dialog: the user types the file's full path into its name box and
    // presses Enter. The dialog fills its name box as it opens, so the typing waits for that;
    // `prepare`, when given, acts first each time (a kind of file picked, a look around).
    void answerFile(std::string what, const QString& path, std::function<void()> prepare = {});

    bool empty() const { return steps_.empty(); }
    // What the user waits for now.
    std::string next() const { return steps_.empty() ? "nothing" : steps_.front().what; }
    // Waits until every step is taken and no box is left open.
    bool finished(int timeoutMs) const;

    // The modal box or dialog now waiting for the user, if it is of kind T.
    template <class T>
    static T* waiting() {
        return qobject_cast<T*>(QApplication::activeModalWidget());
    }
    // The message or input box on the screen, if any.
    static QWidget* shownDialog();
    static QString promptOf(QWidget* dialog);

    // The prompts of boxes that no step expected; each was closed after a while.
    QStringList unexpected;

  private:
    struct Step {
        std::string what;
        std::function<bool()> ready, taken;
        std::function<void()> act;
    };
    void tick();

    const int giveUpMs_;
    std::deque<Step> steps_;
    QTimer timer_;
    QElapsedTimer waiting_;
    bool acting_ = false;
    int stuck_ = 0;
};
