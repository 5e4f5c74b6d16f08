#include "user_steps.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCompleter>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QTest>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "desktop_fixture.h"

UserSteps::UserSteps(int giveUpMs) : giveUpMs_(giveUpMs) {
    QObject::connect(&timer_, &QTimer::timeout, [this] { tick(); });
    timer_.start(50);
    waiting_.start();
}

UserSteps::~UserSteps() {
    timer_.stop();
}

void UserSteps::then(std::string what, std::function<bool()> ready, std::function<void()> act,
                     std::function<bool()> taken) {
    if (!taken) taken = [] { return true; };
    if (steps_.empty()) waiting_.restart();
    steps_.push_back({std::move(what), std::move(ready), std::move(taken), std::move(act)});
}

QWidget* UserSteps::shownDialog() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if ((qobject_cast<QMessageBox*>(w) || qobject_cast<QInputDialog*>(w)) && w->isVisible())
            return w;
    return nullptr;
}

QString UserSteps::promptOf(QWidget* dialog) {
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) return box->text();
    if (auto* input = qobject_cast<QInputDialog*>(dialog)) return input->labelText();
    return {};
}

void UserSteps::answerBox(const QString& prompt, QMessageBox::StandardButton button) {
    then(
        "box " + prompt.toStdString(),
        [prompt] {
            auto* b = qobject_cast<QMessageBox*>(shownDialog());
            return b && b->text().startsWith(prompt);
        },
        [button] {
            auto* b = qobject_cast<QMessageBox*>(shownDialog());
            QTest::mouseClick(b->button(button), Qt::LeftButton);
        });
}

void UserSteps::answerInput(const QString& prompt, const QString& answer) {
    then(
        "input " + prompt.toStdString(),
        [prompt] {
            auto* d = qobject_cast<QInputDialog*>(shownDialog());
            return d && d->labelText().startsWith(prompt);
        },
        [answer] {
            auto* d = qobject_cast<QInputDialog*>(shownDialog());
            auto* line = d->findChild<QLineEdit*>();
            if (!answer.isEmpty()) {
                line->selectAll();
                QTest::keyClicks(line, answer);
            }
            QTest::keyClick(line, Qt::Key_Return);
        });
}

void UserSteps::answerFile(std::string what, const QString& path, std::function<void()> prepare) {
    then(
        std::move(what), [] { return waiting<QFileDialog>() != nullptr; },
        [path, prepare] {
            if (prepare) prepare();
            auto* name = waiting<QFileDialog>()->findChild<QLineEdit*>("fileNameEdit");
            // The box offers the folder's names as they are read, in a list that takes the
            // Enter key while it shows: the user closes it first.
            if (QWidget* offer = name->completer() ? name->completer()->popup() : nullptr;
                offer && offer->isVisible()) {
                QTest::keyClick(offer, Qt::Key_Escape);
                return;
            }
            if (name->text() == path) {
                QTest::keyClick(name, Qt::Key_Return);
                return;
            }
            name->selectAll();
            QTest::keyClicks(name, path);
        },
        [] { return waiting<QFileDialog>() == nullptr; });
}

bool UserSteps::finished(int timeoutMs) const {
    return DesktopFixture::waitFor([&] { return steps_.empty() && !shownDialog(); }, timeoutMs);
}

void UserSteps::tick() {
    if (acting_) return;
    if (!steps_.empty() && waiting_.elapsed() > giveUpMs_) {
        std::fprintf(stderr, "The user was still waiting for %s\n", steps_.front().what.c_str());
        // What the screen showed then, for whoever reads the failure.
        int n = 0;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible()) {
                const QString shot = QDir::temp().filePath(QString("user-steps-%1.png").arg(++n));
                if (w->grab().save(shot))
                    std::fprintf(stderr, "  %s: %s\n", qPrintable(w->windowTitle()),
                                 qPrintable(shot));
            }
        std::_Exit(1);
    }
    if (!steps_.empty() && steps_.front().ready()) {
        stuck_ = 0;
        acting_ = true;
        steps_.front().act();  // may open a box that a later tick answers
        if (steps_.front().taken()) {
            steps_.pop_front();
            waiting_.restart();
        }
        acting_ = false;
        return;
    }
    // A box that no step expects is noted and closed after three seconds.
    QWidget* dialog = shownDialog();
    if (!dialog || ++stuck_ < 60) return;
    stuck_ = 0;
    unexpected << promptOf(dialog);
    dialog->close();
}
