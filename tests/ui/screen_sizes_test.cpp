// Every screen has a smallest size, and at that size everything on it can be
// read: no control is cut off or squeezed below what it needs, captions show
// whole, and each field's label stands level with its field.

#include "ui/admin/frm_change_defaults.h"
#include "ui/admin/frm_db_stats.h"
#include "ui/admin/frm_dbchange.h"
#include "ui/admin/frm_dbcontrol.h"
#include "ui/shell/frm_about.h"
#include "ui/shell/frm_auditlog.h"
#include "ui/courses/frm_courses.h"
#include "ui/calendar/frm_dates.h"
#include "ui/people/frm_family.h"
#include "ui/people/frm_pupil.h"
#include "ui/people/frm_pupil_import.h"
#include <QTabWidget>
#include "ui/shell/frm_main_menu.h"
#include "ui/people/frm_teachers.h"
#include "ui/reports/frm_preferences.h"
#include "ui/reports/frm_report_params.h"
#include "ui/reports/frm_standard_text.h"
#include "ui/toolkit/help_window.h"
#include "ui/shell/switch_screen.h"

#include "screen_driver.h"
#include "support/scripted_boxes.h"
#include "shell/install_folder.h"
#include "shell/selection_lists.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRegularExpression>

#include <functional>
#include <gtest/gtest.h>

using namespace screen_driver;

namespace {

std::string name_of(const QWidget* widget)
{
    QString name = widget->objectName();
    if (name.isEmpty()) {
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            name = QStringLiteral("label \"%1\"").arg(label->text());
        else if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            name = QStringLiteral("button \"%1\"").arg(button->text());
        else
            name = QString::fromLatin1(widget->metaObject()->className());
    }
    return name.toStdString();
}

// The controls a user reads or uses; the parts that Qt builds inside a
// control (a combo box's line, a scroll area's bars) go with their control.
bool is_control(const QWidget* widget)
{
    if (qobject_cast<const QComboBox*>(widget->parentWidget()) || qobject_cast<const QAbstractScrollArea*>(widget->parentWidget())
        || (widget->parentWidget() && qobject_cast<const QAbstractScrollArea*>(widget->parentWidget()->parentWidget())))
        return false;
    return qobject_cast<const QLabel*>(widget) || qobject_cast<const QAbstractButton*>(widget)
           || qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QComboBox*>(widget)
           || qobject_cast<const QAbstractScrollArea*>(widget) || qobject_cast<const QGroupBox*>(widget);
}

// Shrinks the screen as far as it goes and checks that everything on it can still be read.
void expect_readable_at_smallest(QWidget* screen)
{
    SCOPED_TRACE(screen->objectName().toStdString());
    screen->resize(1, 1);
    settle();
    const QSize smallest = screen->size();
    EXPECT_GT(smallest.width(), 100);
    EXPECT_GT(smallest.height(), 60);
    EXPECT_EQ(smallest, screen->minimumSize().expandedTo(QSize(1, 1)));

    const QRect window = screen->rect();
    const int average_character = screen->fontMetrics().averageCharWidth();
    for (QWidget* widget : screen->findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(screen) || !is_control(widget))
            continue;
        const std::string name = name_of(widget);
        const QRect place(widget->mapTo(screen, QPoint(0, 0)), widget->size());
        EXPECT_TRUE(window.contains(place)) << name << " is cut off by the window's edge";
        if (QWidget* parent = widget->parentWidget(); parent && parent != screen) {
            EXPECT_TRUE(parent->rect().contains(widget->geometry())) << name << " is cut off by " << name_of(parent);
        }
        const QSize needed = widget->minimumSizeHint();
        EXPECT_GE(widget->width(), needed.width()) << name << " is squeezed";
        EXPECT_GE(widget->height(), needed.height()) << name << " is squeezed";
        if (const auto* label = qobject_cast<const QLabel*>(widget); label && !label->text().isEmpty()) {
            EXPECT_FALSE(label->wordWrap() && label->buddy()) << name << ": a field's label stays on one line";
            if (!label->wordWrap()) {
                EXPECT_GE(label->width(), label->sizeHint().width()) << name << " shows only part of its words";
            } else {
                // Words that can't be broken, such as a path, must fit whole.
                for (const QString& word : label->text().split(QRegularExpression(QStringLiteral("\\s+")),
                                                               Qt::SkipEmptyParts))
                    EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(word)) << name << ": " << word.toStdString();
            }
        }
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            EXPECT_GE(button->width(), button->sizeHint().width()) << name << " shows only part of its caption";
        }
        if (const auto* edit = qobject_cast<const QLineEdit*>(widget); edit && !edit->isReadOnly()) {
            EXPECT_GE(edit->width(), average_character * 5) << name << " is too narrow to type into";
        }
    }
}

// Every field can be found by a screen reader under a name: its label's,
// or a name of its own where it has no label.
void expect_named_for_screen_readers(QWidget* screen)
{
    SCOPED_TRACE(screen->objectName().toStdString());
    QList<const QWidget*> labelled;
    for (QLabel* label : screen->findChildren<QLabel*>())
        if (label->buddy())
            labelled << label->buddy();
    for (QWidget* widget : screen->findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(screen) || !is_control(widget))
            continue;
        const bool is_field = qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget)
                              || qobject_cast<QAbstractScrollArea*>(widget);
        if (!is_field)
            continue;
        EXPECT_TRUE(labelled.contains(widget) || !widget->accessibleName().isEmpty()) << name_of(widget) << " has no name";
    }
}

// Each field's label stands level with its field: centred on a one-line
// field, at the top of a field of several lines.
void expect_labels_level(QWidget* screen)
{
    SCOPED_TRACE(screen->objectName().toStdString());
    int labelled = 0;
    for (QLabel* label : screen->findChildren<QLabel*>()) {
        QWidget* field = label->buddy();
        if (!field || !label->isVisibleTo(screen) || !field->isVisibleTo(screen))
            continue;
        ++labelled;
        const QRect label_place(label->mapTo(screen, QPoint(0, 0)), label->size());
        const QRect field_place(field->mapTo(screen, QPoint(0, 0)), field->size());
        const bool one_line = qobject_cast<QLineEdit*>(field) || qobject_cast<QComboBox*>(field);
        if (one_line) {
            EXPECT_LE(std::abs(label_place.center().y() - field_place.center().y()), 2) << name_of(label);
        } else {
            EXPECT_LE(std::abs(label_place.top() - field_place.top()), label->fontMetrics().height()) << name_of(label);
        }
        EXPECT_LE(label_place.height(), label->fontMetrics().height() * 3 / 2 + 4) << name_of(label) << " wraps";
    }
    EXPECT_GT(labelled, 0);
}

class ScreenSizes : public ScreenTest<QWidget> {
protected:
    void check(QWidget* opened, bool has_field_labels)
    {
        screen = opened;
        bring_to_front(opened);
        expect_readable_at_smallest(opened);
        expect_named_for_screen_readers(opened);
        if (has_field_labels)
            expect_labels_level(opened);
    }
};

TEST_F(ScreenSizes, TheRecordScreensReadWholeAtTheirSmallest)
{
    school.add_teacher(QStringLiteral("Madame Ada"), QStringLiteral("Ada"), QStringLiteral("Ward"));
    school.add_family(QStringLiteral("Archer"));
    school.add_course(testing_support::NewCourse(QStringLiteral("Ballet Grade 1")));
    school.add_term(QStringLiteral("Spring"), QDate(2026, 1, 4), QDate(2026, 3, 28));
    const std::function<QWidget*()> screens[] = {[] { return new frm_Teachers; }, [] { return new frm_Family; },
                                                 [] { return new frm_Courses; }, [] { return new frm_Dates; }};
    for (const auto& make : screens) {
        testing_support::ScriptedBoxes boxes;  // the term's counts aren't stored: Term Dates asks to save
        QWidget* opened = make();
        if (qobject_cast<frm_Dates*>(opened))
            boxes.expect(QStringLiteral("The database is out of date"), engine::answer::No);
        check(opened, true);
        Unload(screen);
        settle();
    }
}

TEST_F(ScreenSizes, TheReportCriteriaReadWholeAtTheirSmallestWithEveryGridShown)
{
    Sel_Terms().append(school.add_term(QStringLiteral("Spring"), QDate(2026, 1, 4), QDate(2026, 3, 28)));
    Sel_Courses().append(school.add_course(testing_support::NewCourse(QStringLiteral("Ballet Grade 1"))));
    Sel_Activities().append(school.add_activity(testing_support::NewActivity(QStringLiteral("Summer Show"))));
    Sel_Pupils().append(school.add_pupil(school.add_family(QStringLiteral("Archer")), QStringLiteral("Amy")));
    check(new frm_Report_Params, true);
}

TEST_F(ScreenSizes, TheMainMenuAuditLogAboutAndHelpWindowsReadWholeAtTheirSmallest)
{
    check(new frm_Main_Menu, false);
    set_main_menu(&menu);  // the stand-in again, so that the real menu unloads as any screen
    Unload(screen);
    settle();
    check(new frm_auditlog, false);
    Unload(screen);
    settle();
    // About shows the manual's folder, a path with no blank to wrap at.
    const QString install = school.file(QStringLiteral("the-school-office-shared-folder/programs-for-the-office/quillary-install"));
    ASSERT_TRUE(QDir().mkpath(install + QStringLiteral("/manual")));
    set_install_folder_for_tests(install);
    check(new frm_About, false);
    set_install_folder_for_tests(QString());
    Unload(screen);
    settle();
    check(new HelpWindow, false);
}

TEST_F(ScreenSizes, PupilDetailsReadsWholeAtItsSmallestOnEveryPage)
{
    school.add_pupil(school.add_family(QStringLiteral("Archer")), QStringLiteral("Amy"));
    auto* pupils = new frm_Pupil;
    check(pupils, true);
    for (int page = 1; page < pupils->SSTab1->count(); ++page) {
        SCOPED_TRACE(pupils->SSTab1->tabText(page).toStdString());
        pupils->SSTab1->setCurrentIndex(page);
        settle();
        expect_readable_at_smallest(pupils);
        expect_named_for_screen_readers(pupils);
    }
}

TEST_F(ScreenSizes, ThePupilImportReadsWholeAtItsSmallestWithALineShownWhole)
{
    auto* import_screen = new frm_Pupil_Import;
    check(import_screen, true);
    import_screen->Show_Fields(true);
    settle();
    expect_readable_at_smallest(import_screen);
    expect_labels_level(import_screen);
}

TEST_F(ScreenSizes, ReportTextReadsWholeAtItsSmallestOnEveryTabAndPreferencesToo)
{
    auto* texts = new frm_Standard_Text;
    check(texts, true);
    for (int page = 1; page < texts->SSTab1->count(); ++page) {
        SCOPED_TRACE(texts->SSTab1->tabText(page).toStdString());
        texts->SSTab1->setCurrentIndex(page);
        settle();
        expect_readable_at_smallest(texts);
        expect_labels_level(texts);
    }
    Unload(screen);
    settle();
    check(new frm_Preferences, true);
}

TEST_F(ScreenSizes, TheDatabaseScreensReadWholeAtTheirSmallest)
{
    const std::pair<std::function<QWidget*()>, bool> screens[] = {{[] { return new frm_DBChange; }, true},
                                                                  {[] { return new frm_DBControl; }, true},
                                                                  {[] { return new frm_db_stats; }, false},
                                                                  {[] { return new frm_Change_Defaults; }, true}};
    for (const auto& [make, has_field_labels] : screens) {
        check(make(), has_field_labels);
        Unload(screen);
        settle();
    }
}

}  // namespace
