#include "ui/toolkit/message_box_dialog.h"

#include "engine/msg_box.h"

#include <QApplication>
#include <QMessageBox>

namespace ui {

namespace {

QMessageBox::Icon icon_of(int style)
{
    switch (style & engine::mb::IconMask) {
    case engine::mb::Critical: return QMessageBox::Critical;
    case engine::mb::Question: return QMessageBox::Question;
    case engine::mb::Exclamation: return QMessageBox::Warning;
    case engine::mb::Information: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
    }
}

struct ButtonSet {
    QList<QPair<QMessageBox::StandardButton, int>> buttons;  // button, answer
};

ButtonSet buttons_of(int style)
{
    using B = QMessageBox;
    namespace a = engine::answer;
    switch (style & engine::mb::ButtonsMask) {
    case engine::mb::OkCancel: return {{{B::Ok, a::Ok}, {B::Cancel, a::Cancel}}};
    case engine::mb::AbortRetryIgnore: return {{{B::Abort, a::Abort}, {B::Retry, a::Retry}, {B::Ignore, a::Ignore}}};
    case engine::mb::YesNoCancel: return {{{B::Yes, a::Yes}, {B::No, a::No}, {B::Cancel, a::Cancel}}};
    case engine::mb::YesNo: return {{{B::Yes, a::Yes}, {B::No, a::No}}};
    case engine::mb::RetryCancel: return {{{B::Retry, a::Retry}, {B::Cancel, a::Cancel}}};
    default: return {{{B::Ok, a::Ok}}};
    }
}

int show_dialog(const QString& text, int style, const QString& title)
{
    QMessageBox box(icon_of(style), title, text, QMessageBox::NoButton, QApplication::activeWindow());
    const ButtonSet set = buttons_of(style);
    QMessageBox::StandardButtons all;
    for (const auto& [button, answer] : set.buttons)
        all |= button;
    box.setStandardButtons(all);
    const int which = (style & engine::mb::DefaultButton3) ? 2 : (style & engine::mb::DefaultButton2) ? 1 : 0;
    if (which < set.buttons.size())
        box.setDefaultButton(set.buttons[which].first);
    // A question asked in the middle of a long run is answered with the
    // normal pointer; the wait cursor comes back once it is answered.
    const bool waiting = QApplication::overrideCursor() != nullptr;
    if (waiting)
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int clicked = box.exec();
    if (waiting)
        QApplication::restoreOverrideCursor();
    for (const auto& [button, answer] : set.buttons)
        if (clicked == button)
            return answer;
    // Closing the box with Escape or the window's close button.
    return engine::default_answer(style) == engine::answer::Ok ? engine::answer::Ok : engine::answer::Cancel;
}

}  // namespace

void install_dialog_message_boxes()
{
    engine::set_msgbox_responder(show_dialog);
}

}  // namespace ui
