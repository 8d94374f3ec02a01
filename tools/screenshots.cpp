// Pictures of screens for the user manual: opens a copy of a school's
// database, shows each named screen at its own size and saves what it shows.
//
//   quillary-screenshots DATABASE OUTPUT_FOLDER frm_Name[:cmd_Button][=picture] ...
//
// frm_View_Report@FILE.rpt shows that report in the viewer.
//
// With a button named, the button is pressed once the screen is on view, and
// the picture is of the screen then on view (one the button opened, say).
// frm_Name:lst_Name@Text makes the row showing Text current in that list first.
// Run it under a real display (xvfb-run) so that the pictures have the
// desktop's own style. Questions a screen asks are answered with their
// default button, and printed.

#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/settings_store.h"
#include "shell/locale_formats.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"
#include "reports/report_runner.h"
#include "ui/reports/frm_view_report.h"
#include "ui/shell/screen_catalogue.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <cstdio>

namespace {

void wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

// Makes the row showing `text` the current one of the list or grid named `view_name`.
bool choose_row(QWidget* screen, const QString& view_name, const QString& text)
{
    auto* view = screen->findChild<QAbstractItemView*>(view_name);
    if (!view)
        return false;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        const QModelIndex index = view->model()->index(row, 0);
        if (index.data().toString() == text) {
            view->setCurrentIndex(index);
            return true;
        }
    }
    return false;
}

}  // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    if (argc < 4) {
        std::fprintf(stderr, "usage: quillary-screenshots DATABASE OUTPUT_FOLDER frm_Name[=picture] ...\n");
        return 2;
    }
    QTemporaryDir work;
    engine::set_settings_store(std::make_unique<engine::SettingsStore>(work.filePath(QStringLiteral("settings.ini"))));
    engine::set_msgbox_responder(engine::stderr_responder);
    // The folders of a fresh install beside the program: its report list and scripts.
    Default_Settings(Settings());
    Setup_Formats();
    const QString copy = work.filePath(QStringLiteral("school.qdb"));
    if (!QFile::copy(QString::fromLocal8Bit(argv[1]), copy) || !DB_Open(copy)) {
        std::fprintf(stderr, "cannot open %s\n", argv[1]);
        return 1;
    }
    Reset_Changed_Lists();
    const QDir output(QString::fromLocal8Bit(argv[2]));
    int failures = 0;
    for (int i = 3; i < argc; ++i) {
        const QString request = QString::fromLocal8Bit(argv[i]);
        const QString screen_and_button = request.section(QLatin1Char('='), 0, 0);
        const QString form = screen_and_button.section(QLatin1Char(':'), 0, 0);
        const QString button = screen_and_button.section(QLatin1Char(':'), 1);
        const QString picture = request.contains(QLatin1Char('=')) ? request.section(QLatin1Char('='), 1) : form;
        QWidget* screen = nullptr;
        if (form.startsWith(QStringLiteral("frm_View_Report@"))) {
            GCR_Report_File() = form.section(QLatin1Char('@'), 1);
            if (Init_Report())
                screen = new frm_View_Report(QFileInfo(GCR_Report_File()).completeBaseName());
        } else {
            screen = Load_Screen(form);
        }
        if (!screen) {
            std::fprintf(stderr, "no screen %s\n", qPrintable(form));
            ++failures;
            continue;
        }
        screen->show();
        wait(700);
        QWidget* shown = screen;
        if (button.contains(QLatin1Char('@'))) {
            if (!choose_row(screen, button.section(QLatin1Char('@'), 0, 0), button.section(QLatin1Char('@'), 1))) {
                std::fprintf(stderr, "no row %s on %s\n", qPrintable(button), qPrintable(form));
                ++failures;
                continue;
            }
            wait(700);
        } else if (!button.isEmpty()) {
            auto* command = screen->findChild<QAbstractButton*>(button);
            if (!command) {
                std::fprintf(stderr, "no button %s on %s\n", qPrintable(button), qPrintable(form));
                ++failures;
                continue;
            }
            command->click();
            wait(700);
            for (QWidget* window : QApplication::topLevelWidgets())
                if (window->isVisible() && window != screen && !window->objectName().isEmpty())
                    shown = window;
        }
        const QString file = output.filePath(picture + QStringLiteral(".png"));
        if (!shown->grab().save(file)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
            ++failures;
        }
        screen->hide();
    }
    // The screens let go of what they hold (Automated Invoicing its run lock) before the database closes.
    QList<QPointer<QWidget>> windows;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (!window->parentWidget())
            windows << window;
    for (const QPointer<QWidget>& window : windows)
        delete window.data();
    DB_Close_All();
    return failures == 0 ? 0 : 1;
}
