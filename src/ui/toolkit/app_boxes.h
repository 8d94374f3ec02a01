#pragma once
// The program's message boxes under its own title: a notice and a Yes/No
// question. They go through the engine's MsgBox, so tests can answer them.

#include "engine/msg_box.h"
#include "shell/app_globals.h"

#include <QString>

inline int App_Box(const QString& text, int style = engine::mb::OkOnly)
{
    return engine::MsgBox(text, style, App_Title());
}

inline int App_Question(const QString& question)
{
    return App_Box(question, engine::mb::YesNo | engine::mb::Question);
}

// The question answered Yes.
inline bool App_Yes(const QString& question)
{
    return App_Question(question) == engine::answer::Yes;
}
