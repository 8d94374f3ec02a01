#include "cli/cli_boxes.h"

#include "engine/msg_box.h"

namespace cli {

void install_box_answers(Answer answer)
{
    engine::set_msgbox_responder([answer](const QString& text, int style, const QString& title) {
        const int shown = engine::stderr_responder(text, style, title);
        const int buttons = style & engine::mb::ButtonsMask;
        const bool asks = buttons == engine::mb::YesNo || buttons == engine::mb::YesNoCancel;
        if (!asks || answer == Answer::Default)
            return shown;
        return answer == Answer::Yes ? engine::answer::Yes : engine::answer::No;
    });
}

}  // namespace cli
