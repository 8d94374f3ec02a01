// Pictures of screens for the user manual: opens a copy of a school's
// database, shows each named screen at its own size and saves what it shows.
//
//   quillary-screenshots DATABASE OUTPUT_FOLDER frm_Name[=picture] ...
//
// Run it under a real display (xvfb-run) so that the pictures have the
// desktop's own style. Questions a screen asks are answered with their
// default button, and printed.

#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/settings_store.h"
#include "shell/locale_formats.h"
#include "shell/selection_lists.h"
#include "ui/shell/screen_catalogue.h"

#include <QApplication>
#include <QDir>
#include <QFile>
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
        const QString form = request.section(QLatin1Char('='), 0, 0);
        const QString picture = request.contains(QLatin1Char('=')) ? request.section(QLatin1Char('='), 1) : form;
        QWidget* screen = Load_Screen(form);
        if (!screen) {
            std::fprintf(stderr, "no screen %s\n", qPrintable(form));
            ++failures;
            continue;
        }
        screen->show();
        wait(700);
        const QString file = output.filePath(picture + QStringLiteral(".png"));
        if (!screen->grab().save(file)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
            ++failures;
        }
        screen->hide();
    }
    DB_Close_All();
    return failures == 0 ? 0 : 1;
}
