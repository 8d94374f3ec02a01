#pragma once
// Shows the program's message boxes as real dialogs.

namespace ui {
// Installs the dialog responder for engine::MsgBox. Needs a QApplication.
void install_dialog_message_boxes();
}  // namespace ui
