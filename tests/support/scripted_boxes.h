#pragma once
// Scripted answers to message boxes. Each expected box names (part of) its
// text and the answer to give; a box that was not expected, or one left
// unshown when the script goes out of scope, fails the test.

#include "engine/msg_box.h"

#include <QString>
#include <QStringList>
#include <deque>
#include <functional>

namespace testing_support {

struct ExpectedBox {
    QString text_contains;
    int answer = engine::answer::Ok;
    int style = -1;  // -1: any style
};

class ScriptedBoxes {
public:
    ScriptedBoxes();
    ~ScriptedBoxes();
    ScriptedBoxes(const ScriptedBoxes&) = delete;
    ScriptedBoxes& operator=(const ScriptedBoxes&) = delete;

    // Expects a box whose text contains `text_contains`, answered with `answer`.
    ScriptedBoxes& expect(const QString& text_contains, int answer = engine::answer::Ok, int style = -1);
    // Does `action`, by whose end every box expected so far must have been shown:
    // ScriptedBoxes().expect("Saved successfully").during([&] { click(save); });
    void during(const std::function<void()>& action);
    // Every box shown so far, in order, as "text" (lines joined by '\n').
    const QStringList& shown() const { return shown_; }
    const QStringList& titles() const { return titles_; }
    bool all_shown() const { return expected_.empty(); }

private:
    int respond(const QString& text, int style, const QString& title);
    void fail_for_unshown();

    std::deque<ExpectedBox> expected_;
    QStringList shown_;
    QStringList titles_;
    engine::MsgBoxResponder previous_;
};

}  // namespace testing_support
