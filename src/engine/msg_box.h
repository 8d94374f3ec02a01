#pragma once
// The one message box service. Every box the program shows goes through MsgBox;
// the screens install a responder that shows a real dialog, the command-line
// tool one that prints and answers from its options, tests a scripted one.

#include <QString>
#include <functional>

namespace engine {

// Style numbers (buttons + icon), as the program's routines pass them.
namespace mb {
inline constexpr int OkOnly = 0;
inline constexpr int OkCancel = 1;
inline constexpr int AbortRetryIgnore = 2;
inline constexpr int YesNoCancel = 3;
inline constexpr int YesNo = 4;
inline constexpr int RetryCancel = 5;
inline constexpr int Critical = 16;
inline constexpr int Question = 32;
inline constexpr int Exclamation = 48;
inline constexpr int Information = 64;
inline constexpr int DefaultButton2 = 256;
inline constexpr int DefaultButton3 = 512;

inline constexpr int ButtonsMask = 0x0F;
inline constexpr int IconMask = 0x70;
}  // namespace mb

// Answers.
namespace answer {
inline constexpr int Ok = 1;
inline constexpr int Cancel = 2;
inline constexpr int Abort = 3;
inline constexpr int Retry = 4;
inline constexpr int Ignore = 5;
inline constexpr int Yes = 6;
inline constexpr int No = 7;
}  // namespace answer

using MsgBoxResponder = std::function<int(const QString& text, int style, const QString& title)>;

// Shows a box and returns the answer, which is also left in Glob_Msg_Result.
int MsgBox(const QString& text, int style = mb::OkOnly, const QString& title = QString());

// The answer of the last message box.
int& Glob_Msg_Result();

// Replaces the responder; returns the previous one so that it can be put back.
MsgBoxResponder set_msgbox_responder(MsgBoxResponder responder);

// The answer a box gives when nobody can be asked: its default button.
int default_answer(int style);

// The responder used when none is installed: the text goes to standard error
// as "box: <text>", one line per line of text, and the default button answers.
int stderr_responder(const QString& text, int style, const QString& title);

}  // namespace engine
