#pragma once
// A small school ready for invoicing with the default scripts, and what the
// invoicing tests check it by.
//
// Spring 2026 has 12 Mondays, 10 Tuesdays and 11 Saturdays of lessons; the
// default hourly rate is 20. Courses: Ballet Grade 1 (Monday, 10 a lesson:
// 120), Tap Beginners (Tuesday, 45 minutes at the hourly rate: 150), Jazz
// Seniors (Saturday, 8.50 a lesson but a flat 150 in its course type) and
// Modern (cancelled). Families: Ashby (Amy on ballet and tap, Ben on jazz),
// Brook (Cara on ballet), Cole (Dan, only on the cancelled course) and Dyer
// (Eve, on no course).

#include "shell/settings.h"
#include "support/school_made_current.h"
#include "support/stored_values.h"

#include <QDir>
#include <QFileInfo>
#include <ostream>

// Readable failures for texts and lists of texts.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace testing_support {

// The default scripts as the build lays them out, found from this source.
inline QString install_scripts_folder()
{
    return QDir::cleanPath(QFileInfo(QStringLiteral(__FILE__)).absolutePath() + QStringLiteral("/../../install/scripts"));
}

struct InvoicingSchool : SchoolForRuns {
    InvoicingSchool()
    {
        const QString scripts = install_scripts_folder();
        Settings().script_dir = scripts;
        Settings().cost_script = scripts + QStringLiteral("/CrsCosts.sql");
        Settings().term_script = scripts + QStringLiteral("/InTerms.sql");
        Settings().activity_script = scripts + QStringLiteral("/InActDts.sql");

        set_standard(QStringLiteral("Deflt_Course_Hourly_Rate"), 20);
        spring = add_term(QStringLiteral("Spring 2026"), QDate(2026, 1, 5), QDate(2026, 3, 28));
        set_lessons(spring, code::weekday::Monday, 12);
        set_lessons(spring, code::weekday::Tuesday, 10);
        set_lessons(spring, code::weekday::Saturday, 11);
        ballet = add_course(NewCourse(QStringLiteral("Ballet Grade 1")).on(code::weekday::Monday).priced(10));
        tap = add_course(NewCourse(QStringLiteral("Tap Beginners")).on(code::weekday::Tuesday).lasting(45));
        jazz = add_course(
            NewCourse(QStringLiteral("Jazz Seniors")).on(code::weekday::Saturday).priced(8.5).of_type(QStringLiteral("150")));
        modern = add_course(NewCourse(QStringLiteral("Modern")).on(code::weekday::Monday).priced(10).no_longer_running());

        ashby = add_family(QStringLiteral("Ashby"));
        amy = add_pupil(ashby, QStringLiteral("Amy"));
        ben = add_pupil(ashby, QStringLiteral("Ben"));
        brook = add_family(QStringLiteral("Brook"));
        cara = add_pupil(brook, QStringLiteral("Cara"));
        cole = add_family(QStringLiteral("Cole"));
        dan = add_pupil(cole, QStringLiteral("Dan"));
        dyer = add_family(QStringLiteral("Dyer"));
        eve = add_pupil(dyer, QStringLiteral("Eve"));
        put_on_course(amy, ballet);
        put_on_course(amy, tap);
        put_on_course(ben, jazz);
        put_on_course(cara, ballet);
        put_on_course(dan, modern);
    }

    // The invoices, one text per invoice: "family|reason|generated".
    QStringList invoices()
    {
        QStringList texts;
        for (const Row& row : rows(QStringLiteral(
                 "SELECT F.Family_Name, I.Invoice_Reason, I.Invoice_Generated FROM Invoices I "
                 "INNER JOIN Families F ON F.Family_id = I.Invoice_Family_Id ORDER BY F.Family_Name")))
            texts << QStringLiteral("%1|%2|%3").arg(row["Family_Name"].toString(), row["Invoice_Reason"].toString(),
                                                    row["Invoice_Generated"].toString());
        return texts;
    }
    // The lines, one text per line: "family|description|type|amount".
    QStringList lines()
    {
        QStringList texts;
        for (const Row& row : rows(QStringLiteral(
                 "SELECT F.Family_Name, L.Description, L.Inv_Line_Type, L.Amount FROM Invoice_Lines L "
                 "INNER JOIN Invoices I ON I.Invoice_id = L.Inv_Line_Inv_id "
                 "INNER JOIN Families F ON F.Family_id = I.Invoice_Family_Id ORDER BY F.Family_Name, L.Description")))
            texts << QStringLiteral("%1|%2|%3|%4").arg(row["Family_Name"].toString(), row["Description"].toString(),
                                                       row["Inv_Line_Type"].toString(), money_text(row["Amount"]));
        return texts;
    }

    int spring = 0;
    int ballet = 0, tap = 0, jazz = 0, modern = 0;
    int ashby = 0, brook = 0, cole = 0, dyer = 0;
    int amy = 0, ben = 0, cara = 0, dan = 0, eve = 0;
};

}  // namespace testing_support
