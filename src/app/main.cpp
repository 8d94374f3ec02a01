#include "ui/message_box_dialog.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    ui::install_dialog_message_boxes();
    return 0;
}
