#include "cli/demo_school.h"

#include "billing/auto_invoicing.h"
#include "calendar/calendar_db.h"
#include "calendar/term_calendar.h"
#include "cli/demo_school_data.h"
#include "database/code_values.h"
#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/currency.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "shell/selection_lists.h"

#include <QHash>
#include <QVariantMap>

namespace demo {

namespace {

const QString tag = QStringLiteral("demo");

// A fixed-seed generator, so that the same command gives the same school.
class Dice {
public:
    int below(int n)
    {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<int>((state_ >> 33) % static_cast<quint64>(n));
    }
    bool chance(int percent) { return below(100) < percent; }

private:
    quint64 state_ = 20260907;
};

struct Pupil {
    int id;
    int family;
    int age;
    bool boy;
};

class DemoBuilder {
public:
    explicit DemoBuilder(engine::Database& db) : db_(db) {}

    bool build()
    {
        return school_details() && teachers() && courses() && families_and_pupils() && registers()
               && activities() && holidays() && terms() && term_invoices() && money_received();
    }

private:
    // Adds one row to a table; the new row's key comes back in `id`.
    bool add(const QString& table, const QVariantMap& values, int* id = nullptr)
    {
        auto rows = db_.OpenRecordset(table);
        if (!rows || !rows->AddNew())
            return false;
        for (auto it = values.constBegin(); it != values.constEnd(); ++it)
            if (!rows->set(it.key(), it.value()))
                return false;
        if (!rows->Update())
            return false;
        if (id) {
            rows->set_bookmark(rows->LastModified());
            *id = rows->Fields(rows->field(0).name).toInt();
        }
        return true;
    }

    bool run(const QString& query, const QVariantMap& parameters)
    {
        auto definition = db_.QueryDefs(query);
        if (!definition)
            return false;
        for (auto it = parameters.constBegin(); it != parameters.constEnd(); ++it)
            if (!definition->set_parameter(it.key(), it.value()))
                return false;
        return definition->Execute();
    }

    bool school_details()
    {
        return db_.Execute(QStringLiteral(
            "UPDATE Standard_Values SET School_Name = 'Bellwood School of Dance', School_Principle = 'Miss Eleanor Hart',"
            " School_Address = '14 Bell Street, Bellwood, BW1 4DS', School_Telephone = '01632 960 412',"
            " Cheque_Payments = 'Cheques payable to Bellwood School of Dance, please.',"
            " Course_Payment_Details = 'Fees are payable in full by the third week of term.',"
            " Discounts = 'A second child from the same family is charged ten per cent less.',"
            " Notice_Period = 'Half a term''s notice is needed to leave a class.',"
            " Deflt_Course_Hourly_Rate = 9, Deflt_Exam_Hourly_Rate = 32,"
            " Exam_Payment_Details = 'Exam fees are due with the entry form.',"
            " Exam_Arrival = 'Please arrive thirty minutes before your exam, hair in a bun.',"
            " Show_Payment_Details = 'The show costume fee is added to your account.', Show_Cost_per_Pupil = 12.5,"
            " Show_Arrival = 'Dancers arrive at the theatre stage door at 1 pm.',"
            " Outing_Payment_Details = 'Tickets are paid for in advance.', VAT_Type = 1"
            " WHERE stndrd_id = 1"));
    }

    bool teachers()
    {
        for (const DemoTeacher& t : demo_teachers()) {
            int id = 0;
            QVariantMap row{{"Teacher_Name", t.first}, {"Teacher_SurName", t.surname}, {"Teacher_NickName", t.nickname},
                            {"Teacher_Description", t.description}, {"Teacher_Address", "c/o 14 Bell Street, Bellwood"}};
            if (t.exam_number > 0)
                row.insert(QStringLiteral("Teacher_Exam_No"), t.exam_number);
            if (!add(QStringLiteral("Teachers"), row, &id))
                return false;
            teacher_ids_.push_back(id);
        }
        return true;
    }

    bool courses()
    {
        for (const DemoCourse& c : demo_courses()) {
            const QTime start = QTime::fromString(QString::fromLatin1(c.start), QStringLiteral("HH:mm"));
            QVariantMap row{{"Course_Title", c.title},
                            {"Description", QStringLiteral("%1 minutes with %2").arg(c.minutes).arg(demo_teachers()[c.teacher].nickname)},
                            {"Lesson_Duration", c.minutes}, {"Day_of_Week", c.weekday}, {"Course_Time", start},
                            {"Course_Start_txt", start.toString(QStringLiteral("HH:mm"))},
                            {"Course_End_txt", start.addSecs(c.minutes * 60).toString(QStringLiteral("HH:mm"))},
                            {"Course_Teacher", demo_teachers()[c.teacher].nickname},
                            {"Course_Teacher_id", teacher_ids_[c.teacher]}, {"Course_Location", c.location},
                            {"Course_Suppressed", c.suppressed}, {"Course_Cancelled", false}};
            if (c.price > 0)
                row.insert(QStringLiteral("Course_LessonPrice"), c.price);
            if (*c.type)
                row.insert(QStringLiteral("Course_Type"), c.type);
            int id = 0;
            if (!add(QStringLiteral("Courses"), row, &id))
                return false;
            course_ids_.push_back(id);
        }
        return true;
    }

    bool families_and_pupils()
    {
        const auto& surnames = demo_surnames();
        const auto& streets = demo_streets();
        int girl = 0;
        int boy = 0;
        for (int f = 0; f < static_cast<int>(surnames.size()); ++f) {
            const QString surname = QString::fromUtf8(surnames[f]);
            const QString address = QStringLiteral("%1 %2").arg(2 + dice_.below(90)).arg(streets[f % streets.size()]);
            int family = 0;
            if (!add(QStringLiteral("Families"),
                     {{"Family_Name", surname}, {"Family_Address", address}, {"Family_Address3", "Bellwood"}, {"Family_Address4", "Westshire"},
                      {"Family_PostCode", QStringLiteral("BW%1 %2AB").arg(1 + f % 4).arg(1 + f % 9)},
                      {"Family_Phone_1", QStringLiteral("01632 96%1").arg(1000 + f * 37, 4, 10, QLatin1Char('0'))},
                      {"Family_Correspondence", QStringLiteral("Mr and Mrs %1").arg(surname)}},
                     &family))
                return false;
            // Forty families and sixty pupils: every third family has two, a few three.
            const int children = f % 3 == 0 ? (f % 9 == 0 ? 3 : 2) : 1;
            for (int c = 0; c < children && pupils_.size() < 60; ++c) {
                const bool is_boy = dice_.chance(15);
                const QString first = QString::fromUtf8(is_boy ? demo_boys_names()[boy++ % demo_boys_names().size()]
                                                               : demo_girls_names()[girl++ % demo_girls_names().size()]);
                const int age = 3 + dice_.below(14);
                const QDate born(2026 - age, 1 + dice_.below(12), 1 + dice_.below(28));
                // A few pupils have left: hidden, but kept with their history.
                const bool hidden = pupils_.size() % 17 == 16;
                const char gender = is_boy ? (hidden ? code::gender::Hidden_Male : code::gender::Male)
                                           : (hidden ? code::gender::Hidden_Female : code::gender::Female);
                int id = 0;
                if (!add(QStringLiteral("Pupils"),
                         {{"Pupil_FirstName", first}, {"Pupil_SurName", surname}, {"Pupil_Birthdate", born},
                          {"Pupil_Startdate", QDate(2026 - dice_.below(4), 9, 7)}, {"Pupil_Gender", QString(QLatin1Char(gender))},
                          {"Pupil_Family_Id", family}, {"Pupil_Regn_Fee", "Paid"}},
                         &id))
                    return false;
                pupils_.push_back(Pupil{id, family, age, is_boy});
            }
            // A few parents dance too, in the adult class.
            if (f % 13 == 7) {
                const int age = 34 + dice_.below(12);
                int id = 0;
                if (!add(QStringLiteral("Pupils"),
                         {{"Pupil_FirstName", f == 7 ? "Sarah" : f == 20 ? "Joanne" : "Priya"}, {"Pupil_SurName", surname},
                          {"Pupil_Birthdate", QDate(2026 - age, 3 + f % 9, 11)}, {"Pupil_Startdate", QDate(2025, 9, 8)},
                          {"Pupil_Gender", QString(QLatin1Char(code::gender::Female))}, {"Pupil_Family_Id", family}},
                         &id))
                    return false;
                pupils_.push_back(Pupil{id, family, age, false});
            }
        }
        return true;
    }

    bool registers()
    {
        for (const Pupil& p : pupils_) {
            int placed = 0;
            for (size_t c = 0; c < demo_courses().size() && placed < 3; ++c) {
                const DemoCourse& course = demo_courses()[c];
                if (p.age < course.min_age || p.age > course.max_age || course.suppressed)
                    continue;
                if (placed > 0 && !dice_.chance(45))
                    continue;
                if (!add(QStringLiteral("Register_Courses"), {{"Pupil_id", p.id}, {"Course_id", course_ids_[c]}}))
                    return false;
                ++placed;
            }
        }
        return true;
    }

    bool activities()
    {
        int exam_grade1 = 0, exam_grade2 = 0, exam_tap = 0, show = 0, outing = 0;
        const QString table = QStringLiteral("Exams");
        if (!add(table, {{"Exam_Type", code::exam_type::Exam}, {"Exam_Title", "Ballet Grade 1"}, {"Exam_Dance", "Ballet"},
                         {"Exam_Level", 1}, {"Exam_Duration", 15}, {"Exam_Price", 38.0}, {"Exam_Expenses", 0.0},
                         {"Exam_Teacher", teacher_ids_[0]}, {"Exam_Notes", "Pink leotard, pink tights, hair in a bun"}},
                 &exam_grade1)
            || !add(table, {{"Exam_Type", code::exam_type::Exam}, {"Exam_Title", "Ballet Grade 2"}, {"Exam_Dance", "Ballet"},
                            {"Exam_Level", 2}, {"Exam_Duration", 20}, {"Exam_Price", 0.0}, {"Exam_Expenses", 0.0},
                            {"Exam_Teacher", teacher_ids_[0]}},
                    &exam_grade2)
            || !add(table, {{"Exam_Type", code::exam_type::Exam}, {"Exam_Title", "Tap Grade 1"}, {"Exam_Dance", "Tap"},
                            {"Exam_Level", 1}, {"Exam_Duration", 15}, {"Exam_Price", 36.0}, {"Exam_Expenses", 2.5},
                            {"Exam_Teacher", teacher_ids_[1]}},
                    &exam_tap)
            || !add(table, {{"Exam_Type", code::exam_type::Show}, {"Exam_Title", "Summer Show: The Enchanted Garden"},
                            {"Exam_Level", 1}, {"Exam_Duration", 150}, {"Exam_Price", 0.0}, {"Exam_Expenses", 0.0}},
                    &show)
            || !add(table, {{"Exam_Type", code::exam_type::Outing}, {"Exam_Title", "Theatre trip: The Nutcracker"},
                            {"Exam_Level", 1}, {"Exam_Duration", 180}, {"Exam_Price", 28.0}, {"Exam_Expenses", 4.0}},
                    &outing))
            return false;

        const QDate exam_day(2027, 3, 13), show_day(2027, 7, 10), outing_day(2026, 12, 12), last_exams(2026, 3, 14);
        for (const auto& [day, title] : std::vector<std::pair<QDate, const char*>>{
                 {last_exams, "Spring Exams 2026"}, {outing_day, "Nutcracker Outing"},
                 {exam_day, "Spring Exams 2027"}, {show_day, "Summer Show 2027"}})
            if (!add(QStringLiteral("Activity_Titles"), {{"ActT_Date", day}, {"ActT_Title", title}}))
                return false;

        int order = 0;
        QTime at(10, 0);  // each candidate when the one before has finished
        for (const Pupil& p : pupils_) {
            if (p.age >= 6 && p.age <= 9 && order < 10) {
                const int exam = p.age <= 7 ? exam_grade1 : exam_grade2;
                // Not marked yet: a mark of 0 and no grade, as the timetable lists them.
                if (!add(QStringLiteral("Exam_Results"),
                         {{"Results_Pupil_id", p.id}, {"Results_Exam_id", exam}, {"Results_Teacher_id", teacher_ids_[0]},
                          {"Results_Date", exam_day}, {"Results_Time_txt", at.toString(QStringLiteral("HH:mm"))},
                          {"Results_Order", ++order}, {"Results_Mark", 0}, {"Results_Grade", QStringLiteral("")}}))
                    return false;
                at = at.addSecs((p.age <= 7 ? 15 : 20) * 60);
                if (order == 5)
                    at = at.addSecs(15 * 60);  // the examiner's break
                // Last year's exam, with its mark and grade.
                const int mark = 55 + dice_.below(40);
                if (!add(QStringLiteral("Exam_Results"),
                         {{"Results_Pupil_id", p.id}, {"Results_Exam_id", exam_tap}, {"Results_Teacher_id", teacher_ids_[1]},
                          {"Results_Date", last_exams}, {"Results_Time_txt", "11:00"}, {"Results_Order", order},
                          {"Results_Mark", mark},
                          {"Results_Grade", mark >= 85 ? "Distinction" : mark >= 75 ? "Merit" : mark >= 55 ? "Pass" : "Standard not attained"}}))
                    return false;
            }
            if (p.age >= 5 && dice_.chance(60)
                && !add(QStringLiteral("Exam_Results"), {{"Results_Pupil_id", p.id}, {"Results_Exam_id", show}, {"Results_Date", show_day}}))
                return false;
            if (p.age >= 8 && dice_.chance(40)
                && !add(QStringLiteral("Exam_Results"), {{"Results_Pupil_id", p.id}, {"Results_Exam_id", outing}, {"Results_Date", outing_day}}))
                return false;
        }
        return true;
    }

    bool holidays()
    {
        for (const QDate& day : demo_holidays())
            if (!DB_Insert_Holiday(day))
                return false;
        return true;
    }

    // Each term as the Term Dates screen saves it: dates typed, grid filled, Update.
    bool terms()
    {
        for (const DemoTerm& term : demo_terms()) {
            TermCalendar calendar;
            calendar.boxes.name = QString::fromLatin1(term.name);
            calendar.boxes.start = vb::Format(engine::make_datetime(term.start), Glob_Date_Format());
            calendar.boxes.end = vb::Format(engine::make_datetime(term.end), Glob_Date_Format());
            if (!calendar.Fill_Grid(term.start, term.end) || !calendar.Save_Term())
                return false;
            term_ids_.push_back(calendar.boxes.term_id.toInt());
        }
        return true;
    }

    // The autumn term's invoices, raised by the default scripts as the
    // Automated Invoicing screen raises them.
    bool term_invoices()
    {
        Sel_Terms().append(term_ids_.front());
        AutoInvoicing screen;
        const bool raised = screen.prepare() && screen.insert_term();
        screen.unload();
        return raised;
    }

    struct InvoiceTotal {
        int invoice;
        engine::Currency total;
    };

    std::vector<InvoiceTotal> invoice_totals()
    {
        std::vector<InvoiceTotal> totals;
        auto rows = db_.OpenRecordset(QStringLiteral(
            "SELECT I.Invoice_id, round(sum(L.Amount), 4) AS Total FROM Invoices I"
            " INNER JOIN Invoice_Lines L ON L.Inv_Line_Inv_id = I.Invoice_id GROUP BY I.Invoice_id ORDER BY I.Invoice_id"));
        for (; rows && !rows->at_eof(); rows->MoveNext())
            totals.push_back({rows->Fields(QStringLiteral("Invoice_id")).toInt(),
                              engine::Currency::from_double(rows->Fields(QStringLiteral("Total")).toDouble())});
        return totals;
    }

    bool receipt(int invoice, engine::Currency amount, const char* method, QDate day, const char* notes = "")
    {
        return run(QStringLiteral("Qry_Insert_Receipt"), {{"p_invoice_id", invoice}, {"p_Amount", QVariant::fromValue(amount)},
                                                          {"p_Method", method}, {"p_date", day}, {"p_notes", notes}});
    }

    // Most families pay in full, some in part, one pays too much, and one
    // debt is written off, as the Money Received screen does it.
    bool money_received()
    {
        const std::vector<InvoiceTotal> totals = invoice_totals();
        if (totals.empty())
            return false;
        const char* const methods[] = {"Cheque", "Cash", "Debit Card", "Credit Card"};
        bool overpaid = false;
        bool written_off = false;
        for (size_t i = 0; i < totals.size(); ++i) {
            const InvoiceTotal& t = totals[i];
            const QDate paid_on = QDate(2026, 9, 14).addDays(static_cast<int>(i % 12));
            const char* method = methods[i % 4];
            bool ok = true;
            switch (i % 6) {
            case 0: case 3: case 4:  // paid in full
                ok = receipt(t.invoice, t.total, method, paid_on);
                break;
            case 1:  // paid in two halves
                ok = receipt(t.invoice, engine::Currency::from_units(t.total.units() / 2), method, paid_on)
                     && receipt(t.invoice, t.total - engine::Currency::from_units(t.total.units() / 2), method,
                                paid_on.addDays(35), "Second half");
                break;
            case 2:  // part paid, the rest still owing
                ok = receipt(t.invoice, engine::Currency::from_whole(20), method, paid_on, "First instalment");
                break;
            case 5:  // not paid yet, except for one overpayment and one written off
                if (!overpaid) {
                    overpaid = true;
                    ok = receipt(t.invoice, t.total + engine::Currency::from_whole(10), "Cheque", paid_on,
                                 "Cheque for more than the invoice: credit carried");
                } else if (!written_off) {
                    written_off = true;
                    ok = run(QStringLiteral("Qry_Insert_Invoice_Line"),
                             {{"par_Invoice_id", t.invoice}, {"par_Pupil_id", QVariant()}, {"par_Course_id", QVariant()},
                              {"par_Activity_id", QVariant()}, {"par_Type", code::inv_line_type::Written_Off},
                              {"par_Amount", QVariant::fromValue(-t.total)}, {"par_Description", "Amount written off"}});
                }
                break;
            }
            if (!ok)
                return false;
        }
        return true;
    }

    engine::Database& db_;
    Dice dice_;
    std::vector<int> teacher_ids_;
    std::vector<int> term_ids_;
    std::vector<int> course_ids_;
    std::vector<Pupil> pupils_;
};

}  // namespace

bool build_demo_school(const QString& path)
{
    if (!DB_Create_Database(path, true))
        return false;
    if (!DB_Open(path))
        return false;
    engine::Workspace& workspace = Program_Workspace();
    bool built = workspace.BeginTrans();
    if (built) {
        DemoBuilder builder(*Current_Db());
        built = builder.build();
        built = (built && workspace.CommitTrans()) || (workspace.Rollback() && false);
    }
    if (!built)
        Report_Error(report::Unexpected, QStringLiteral("Could not build the demo school in ") + path,
                     engine::mb::Critical, tag, QStringLiteral("build_demo_school"));
    DB_Close_All();
    if (!built)
        DB_Delete_Files(path);
    return built;
}

}  // namespace demo
