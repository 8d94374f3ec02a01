#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

namespace testing_support {

ScriptedBoxes::ScriptedBoxes()
{
    previous_ = engine::set_msgbox_responder(
        [this](const QString& text, int style, const QString& title) { return respond(text, style, title); });
}

ScriptedBoxes::~ScriptedBoxes()
{
    engine::set_msgbox_responder(std::move(previous_));
    fail_for_unshown();
}

void ScriptedBoxes::during(const std::function<void()>& action)
{
    action();
    fail_for_unshown();
}

void ScriptedBoxes::fail_for_unshown()
{
    for (const ExpectedBox& box : expected_)
        ADD_FAILURE() << "Expected message box never shown: " << box.text_contains.toStdString();
    expected_.clear();
}

ScriptedBoxes& ScriptedBoxes::expect(const QString& text_contains, int answer, int style)
{
    expected_.push_back(ExpectedBox{text_contains, answer, style});
    return *this;
}

int ScriptedBoxes::respond(const QString& text, int style, const QString& title)
{
    shown_.append(text);
    titles_.append(title);
    if (expected_.empty()) {
        ADD_FAILURE() << "Unexpected message box: " << text.toStdString();
        return engine::default_answer(style);
    }
    const ExpectedBox box = expected_.front();
    expected_.pop_front();
    EXPECT_TRUE(text.contains(box.text_contains))
        << "Message box text: " << text.toStdString() << "\nexpected to contain: " << box.text_contains.toStdString();
    if (box.style >= 0) {
        EXPECT_EQ(style, box.style) << "for message box: " << text.toStdString();
    }
    return box.answer;
}

}  // namespace testing_support
