// The desktop program: start-up, then the main menu until the user ends it.

#include "reportoutput/output_writers.h"
#include "shell/single_instance.h"
#include "shell/startup.h"
#include "ui/shell/frm_main_menu.h"
#include "ui/shell/frm_startup.h"
#include "ui/toolkit/message_box_dialog.h"
#include "ui/shell/switch_screen.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quillary"));
    QApplication::setOrganizationName(QStringLiteral("Quillary"));
    // The program ends when the main menu goes, not when a window happens to close.
    QApplication::setQuitOnLastWindowClosed(false);
    ui::install_dialog_message_boxes();
    reportoutput::install_output_writers();

    auto* startup = new frm_Startup;
    startup->show();
    QApplication::processEvents();

    SingleInstance instance;
    if (!Main_Start(instance)) {
        delete startup;
        Main_End_Prog_Close();
        return 0;
    }

    // The menu lives to the end; Switch_Screen shows it and unloads the start-up screen.
    Switch_Screen(startup, new frm_Main_Menu, false);
    const int result = QApplication::exec();
    Main_End_Prog_Close();
    return result;
}
