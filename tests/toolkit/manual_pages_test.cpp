// Every screen's help context has its page in the manual.

#include "toolkit/help_pages.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

namespace {

TEST(ManualPages, EveryHelpContextHasItsPageAndTheContentsExist)
{
    namespace c = help::context;
    const QDir manual(QStringLiteral(QUILLARY_BUILD_DIR "/manual"));
    for (int context : {c::How_To_Get_Help, c::Main_Menu, c::Audit_Log, c::About, c::Select_File, c::Change_Defaults,
                        c::Preferences, c::Change_Database, c::Database_Control, c::Database_Statistics, c::Term_Dates,
                        c::Automated_Invoices, c::Invoices, c::Invoice_Lines, c::Receipts, c::Families, c::Pupils,
                        c::Pupil_Import, c::Teachers, c::Courses, c::Course_Register, c::Activities, c::Activity_Dates,
                        c::Activity_Register, c::Exam_Timetable, c::Activity_Results, c::Reports, c::Report_Selections,
                        c::Report_Messages})
        EXPECT_TRUE(QFileInfo::exists(manual.filePath(QString::number(context) + QStringLiteral(".html")))) << context;
    EXPECT_TRUE(QFileInfo::exists(manual.filePath(QStringLiteral("index.html"))));
    EXPECT_TRUE(QFileInfo::exists(manual.filePath(QStringLiteral("help_on_help.html"))));
    EXPECT_TRUE(QFileInfo::exists(manual.filePath(QStringLiteral("getting-started.html"))));
}

}  // namespace
