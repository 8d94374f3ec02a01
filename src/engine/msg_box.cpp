#include "engine/msg_box.h"

#include <QStringList>
#include <cstdio>

namespace engine {

namespace {
MsgBoxResponder& responder()
{
    static MsgBoxResponder current = stderr_responder;
    return current;
}
}  // namespace

int& Glob_Msg_Result()
{
    static int result = 0;
    return result;
}

int MsgBox(const QString& text, int style, const QString& title)
{
    const int result = responder()(text, style, title);
    Glob_Msg_Result() = result;
    return result;
}

MsgBoxResponder set_msgbox_responder(MsgBoxResponder replacement)
{
    MsgBoxResponder previous = std::move(responder());
    responder() = replacement ? std::move(replacement) : MsgBoxResponder(stderr_responder);
    return previous;
}

int default_answer(int style)
{
    const int buttons = style & mb::ButtonsMask;
    const int which = (style & mb::DefaultButton3) ? 2 : (style & mb::DefaultButton2) ? 1 : 0;
    switch (buttons) {
    case mb::OkCancel: return which == 0 ? answer::Ok : answer::Cancel;
    case mb::AbortRetryIgnore: return which == 0 ? answer::Abort : which == 1 ? answer::Retry : answer::Ignore;
    case mb::YesNoCancel: return which == 0 ? answer::Yes : which == 1 ? answer::No : answer::Cancel;
    case mb::YesNo: return which == 0 ? answer::Yes : answer::No;
    case mb::RetryCancel: return which == 0 ? answer::Retry : answer::Cancel;
    default: return answer::Ok;
    }
}

int stderr_responder(const QString& text, int style, const QString&)
{
    const QStringList lines = QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")).split(QLatin1Char('\n'));
    for (const QString& line : lines)
        std::fprintf(stderr, "box: %s\n", line.toLocal8Bit().constData());
    std::fflush(stderr);
    return default_answer(style);
}

}  // namespace engine
