#include "database/schema_statements.h"

#include "engine/database.h"

#include <QRegularExpression>
#include <QStringList>

namespace schema {

namespace {

// Columns are declared with the type words the engine reads (COUNTER keys as
// SQLite rowid aliases, LONG, SHORT, BYTE, BIT, SINGLE, CURRENCY, DATE...),
// so that apply_conventions enforces ranges, lengths and forms from them.
QString table(const QString& definition)
{
    return with_text_collation(definition);
}

// Jet's "WITH DISALLOW NULL": SQLite indexes accept nulls, so two triggers
// refuse a row with a null in any indexed column, with Jet's error.
QString index_disallowing_null(const QString& index, const QString& on_table, const QStringList& columns)
{
    QStringList inserted_null;
    for (const QString& column : columns)
        inserted_null << QStringLiteral("NEW.%1 IS NULL").arg(column);
    const QString when = inserted_null.join(QStringLiteral(" OR "));
    const QString refuse =
        QStringLiteral("BEGIN SELECT RAISE(ABORT, 'jet:3058:Index or primary key cannot contain a Null value.'); END;");
    return QStringLiteral("CREATE INDEX %1 ON %2 (%3);\n").arg(index, on_table, columns.join(QStringLiteral(", ")))
         + QStringLiteral("CREATE TRIGGER %1_null_insert BEFORE INSERT ON %2 WHEN %3 %4\n").arg(index, on_table, when, refuse)
         + QStringLiteral("CREATE TRIGGER %1_null_update BEFORE UPDATE OF %2 ON %3 WHEN %4 %5\n")
               .arg(index, columns.join(QStringLiteral(", ")), on_table, when, refuse);
}

SchemaStep table_step(const QString& label, const QString& name, const QString& definition)
{
    return SchemaStep{label, name, name, table(definition)};
}

SchemaStep index_step(const QString& label, const QString& name, const QString& definition)
{
    return SchemaStep{label, name, QString(), definition};
}

std::vector<SchemaStep> make_core_steps()
{
    return {
        table_step("Sys table", "Sys_tab", R"(CREATE TABLE Sys_tab (
            s_DB_Type BYTE, s_Creation_Date DATE, s_Backup_Date DATE, s_Backup_filename TEXT,
            s_Style_Type BYTE, s_Filename_zrepfmt TEXT, s_Filename_InvTerm TEXT, s_Filename_InvAct TEXT,
            s_Filename_CrsCost TEXT);)"),

        table_step("Families", "Families", R"(CREATE TABLE Families (
            Family_id INTEGER CONSTRAINT Family_PK PRIMARY KEY AUTOINCREMENT,
            Family_Name TEXT, Family_Address TEXT, Family_Address2 TEXT, Family_Address3 TEXT,
            Family_Address4 TEXT, Family_PostCode TEXT, Family_Phone_1 TEXT, Family_Phone_2 TEXT,
            Family_Notes TEXT, Family_Marker TEXT, Family_Correspondence TEXT);
            CREATE UNIQUE INDEX Family_Uniq ON Families (Family_Name, Family_Address);)"),

        table_step("Pupils", "Pupils", R"(CREATE TABLE Pupils (
            Pupil_id INTEGER CONSTRAINT Pupils_PK PRIMARY KEY AUTOINCREMENT,
            Pupil_FirstName TEXT, Pupil_SurName TEXT, Pupil_Birthdate DATE, Pupil_Startdate DATE,
            Pupil_Gender TEXT(1),
            Pupil_Family_Id LONG CONSTRAINT FKeyP REFERENCES Families (Family_Id),
            Pupil_Marker TEXT(10), Pupil_Ref_Num TEXT, Pupil_Ref_Num2 TEXT, Pupil_Ref_Num3 TEXT,
            Pupil_Ref_Num4 TEXT, Pupil_Medical TEXT, Pupil_E_Mail TEXT, Pupil_Special_Needs TEXT,
            Pupil_Notes TEXT, Pupil_Regn_Fee TEXT, Pupil_Ethnicity TEXT);
            CREATE UNIQUE INDEX Pupil_Uniq ON Pupils (Pupil_Family_id, Pupil_Firstname);)"),

        table_step("Teachers", "Teachers", R"(CREATE TABLE Teachers (
            Teacher_id INTEGER CONSTRAINT Teacher_PK PRIMARY KEY AUTOINCREMENT,
            Teacher_Name TEXT, Teacher_SurName TEXT, Teacher_NickName TEXT, Teacher_Address TEXT,
            Teacher_Phone1 TEXT, Teacher_Phone2 TEXT, Teacher_Ref1 TEXT, Teacher_Ref2 TEXT,
            Teacher_Exam_No SHORT, Teacher_Description TEXT, Teacher_Notes TEXT);
            CREATE UNIQUE INDEX Teacher_Nickname ON Teachers (Teacher_NickName);
            CREATE UNIQUE INDEX Teacher_Uniq ON Teachers (Teacher_Name, Teacher_SurName);)"),

        table_step("Exams", "Exams", R"(CREATE TABLE Exams (
            Exam_id INTEGER CONSTRAINT Exams_PK PRIMARY KEY AUTOINCREMENT,
            Exam_Type BYTE, Exam_Title TEXT, Exam_Dance TEXT, Exam_Level SHORT, Exam_Duration SHORT,
            Exam_Price SINGLE, Exam_Expenses SINGLE, Exam_Notes TEXT, Exam_Notes_M TEXT, Exam_Grade TEXT,
            Exam_Faculty TEXT, Exam_Branch TEXT, Exam_Category TEXT,
            Exam_Teacher LONG CONSTRAINT FKeyExamT REFERENCES Teachers (Teacher_Id),
            Exam_Marker TEXT, Exam_Description TEXT);
            CREATE UNIQUE INDEX Exams_Title ON Exams (Exam_Title);
            CREATE UNIQUE INDEX Exams_Uniq ON Exams (Exam_Type, Exam_Dance, Exam_Level);)"),

        // A BIT column of Jet is never null: a row written without it is False.
        table_step("Courses", "Courses", R"(CREATE TABLE Courses (
            Course_id INTEGER CONSTRAINT Courses_PK PRIMARY KEY AUTOINCREMENT,
            Course_Title TEXT, Description TEXT, Lesson_Duration SHORT, Day_of_Week SHORT,
            Course_Time TIME, Course_Start_txt TEXT(9), Course_End_txt TEXT(9), Course_LessonPrice SINGLE,
            Course_Notes TEXT, Course_Teacher TEXT, Course_Type TEXT,
            Course_Suppressed BIT DEFAULT 0, Course_Cancelled BIT DEFAULT 0, Course_Location TEXT,
            Course_Teacher_id LONG CONSTRAINT FKeyCourseT REFERENCES Teachers (Teacher_Id));
            CREATE UNIQUE INDEX Courses_Tile ON Courses (Course_Title);)"),
        index_step("Courses", "Courses_Day", index_disallowing_null("Courses_Day", "Courses", {"Day_of_Week"})),

        table_step("Register_Courses", "Register_Courses", R"(CREATE TABLE Register_Courses (
            Register_id INTEGER CONSTRAINT Register_PK PRIMARY KEY AUTOINCREMENT,
            Pupil_id LONG CONSTRAINT FKeyRCP REFERENCES Pupils (Pupil_Id),
            Course_id LONG CONSTRAINT FKeyRCC REFERENCES Courses (Course_Id));
            CREATE UNIQUE INDEX Register_Uniq ON Register_Courses (Pupil_id, Course_id);)"),

        table_step("Exam_Results", "Exam_Results", R"(CREATE TABLE Exam_Results (
            Results_id INTEGER CONSTRAINT Results_PK PRIMARY KEY AUTOINCREMENT,
            Results_Pupil_id LONG CONSTRAINT FKeyERP REFERENCES Pupils (Pupil_Id),
            Results_Exam_id LONG CONSTRAINT FKeyERE REFERENCES Exams (Exam_Id),
            Results_Teacher_id LONG CONSTRAINT FKeyERT REFERENCES Teachers (Teacher_Id),
            Results_Date DATETIME, Results_Time_txt TEXT, Results_Order SHORT, Results_Mark SHORT,
            Results_Grade TEXT);
            CREATE UNIQUE INDEX Results_Uniq ON Exam_Results (Results_Pupil_id, Results_Exam_id, Results_Date);)"),
        index_step("Exam_Results", "Activity_Dates",
                   index_disallowing_null("Activity_Dates", "Exam_Results", {"Results_Date"})),
        index_step("Exam_Results", "Results_PE",
                   index_disallowing_null("Results_PE", "Exam_Results", {"Results_Pupil_id", "Results_Exam_id"})),

        table_step("Activity_Titles", "Activity_Titles", R"(CREATE TABLE Activity_Titles (
            ActT_Date DATETIME NOT NULL CONSTRAINT ActT_PK PRIMARY KEY, ActT_Title TEXT);)"),

        table_step("Term_Dates", "Term_Dates", R"(CREATE TABLE Term_Dates (
            Term_Id INTEGER CONSTRAINT Term_PK PRIMARY KEY AUTOINCREMENT,
            Term_Name TEXT, Term_Start DATETIME, Term_End DATETIME);
            CREATE UNIQUE INDEX Term_UniqName ON Term_Dates (Term_Name);
            CREATE UNIQUE INDEX Term_UniqStart ON Term_Dates (Term_Start);)"),

        table_step("Number_Lessons", "Number_Lessons", R"(CREATE TABLE Number_Lessons (
            Term_Id LONG CONSTRAINT FKeyNL1 REFERENCES Term_Dates (Term_Id),
            Day_Number SHORT, Num_Lessons SHORT, First_Date DATETIME, Last_Date DATETIME, Hols_Str TEXT);
            CREATE UNIQUE INDEX NumLess_UK ON Number_Lessons (Term_Id, Day_Number);)"),

        table_step("Holidays", "Holidays", R"(CREATE TABLE Holidays (
            Day_Off DATETIME NOT NULL CONSTRAINT Holidays_PK PRIMARY KEY);)"),

        table_step("Standard_Values", "Standard_Values", R"(CREATE TABLE Standard_Values (
            stndrd_id LONG, School_Name TEXT, School_Principle TEXT, School_Address TEXT,
            School_Telephone TEXT, Cheque_Payments TEXT, Course_Payment_Details TEXT, Discounts TEXT,
            Notice_Period TEXT, Deflt_Course_Hourly_Rate SINGLE, Exam_Payment_Details TEXT,
            Exam_Arrival TEXT, Exam_Notices TEXT, Deflt_Exam_Hourly_Rate SINGLE, Show_Payment_Details TEXT,
            Show_Arrival TEXT, Show_Notices TEXT, Show_Cost_per_Pupil SINGLE, Outing_Payment_Details TEXT,
            Outing_Arrival TEXT, Outing_Notices TEXT, Competition_Payment_Details TEXT,
            Competition_Arrival TEXT, Competition_Notices TEXT, Spare_Payment_Details TEXT,
            Spare_Arrival TEXT, Spare_Notices TEXT,
            Discount_1 TEXT, txt_Discount_1 TEXT, Discount_2 TEXT, txt_Discount_2 TEXT,
            Discount_3 TEXT, txt_Discount_3 TEXT, Discount_4 TEXT, txt_Discount_4 TEXT,
            Discount_5 TEXT, txt_Discount_5 TEXT, Discount_6 TEXT, txt_Discount_6 TEXT,
            Discount_7 TEXT, txt_Discount_7 TEXT, Discount_8 TEXT, txt_Discount_8 TEXT,
            VAT_Type BYTE, VAT_Percent1 SINGLE, VAT_Percent2 SINGLE, VAT_Percent3 SINGLE,
            VAT_Percent4 SINGLE, VAT_Percent5 SINGLE, VAT_Percent6 SINGLE,
            VAT_Regn_Notice TEXT, VAT_Notice TEXT, VAT_Included TEXT);)"),
    };
}

std::vector<SchemaStep> make_invoicing_steps()
{
    return {
        table_step("Invoice table", "Invoices", R"(CREATE TABLE Invoices (
            Invoice_id INTEGER CONSTRAINT Invoices_PK PRIMARY KEY AUTOINCREMENT,
            Invoice_Family_Id LONG CONSTRAINT IKeyF REFERENCES Families (Family_Id),
            Invoice_Term_Id LONG CONSTRAINT IKeyT REFERENCES Term_Dates (Term_Id),
            Invoice_Date DATE, Invoice_Activity_Date DATE, Invoice_Reason TEXT, Invoice_Notes TEXT,
            Invoice_Generated BYTE);
            CREATE UNIQUE INDEX Invoices_AUniq ON Invoices (Invoice_Family_id, Invoice_Activity_Date, Invoice_Reason);
            CREATE UNIQUE INDEX Invoices_TUniq ON Invoices (Invoice_Family_id, Invoice_Term_id, Invoice_Reason);)"),
        // Jet's "WITH IGNORE NULL": a term invoice takes no entry.
        index_step("Invoice table index", "Invoices_Act_Date",
                   "CREATE INDEX Invoices_Act_Date ON Invoices (Invoice_Activity_Date) "
                   "WHERE Invoice_Activity_Date IS NOT NULL;"),

        table_step("Invoice Lines", "Invoice_Lines", R"(CREATE TABLE Invoice_Lines (
            Invoice_Line_id INTEGER CONSTRAINT Invoice_Lines_PK PRIMARY KEY AUTOINCREMENT,
            Inv_Line_Inv_id LONG CONSTRAINT ILKeyI REFERENCES Invoices (Invoice_Id),
            Inv_Line_Pupil_id LONG CONSTRAINT ILKeyP REFERENCES Pupils (Pupil_Id),
            Inv_Line_Course_id LONG CONSTRAINT ILKeyC REFERENCES Courses (Course_Id),
            Inv_Line_Exam_id LONG CONSTRAINT ILKeyE REFERENCES Exams (Exam_Id),
            Inv_Line_Type BYTE, Description TEXT, Amount CURRENCY);)"),

        table_step("Receipts", "Receipts", R"(CREATE TABLE Receipts (
            Receipt_id INTEGER CONSTRAINT Receipts_PK PRIMARY KEY AUTOINCREMENT,
            Receipt_Invoice_id LONG CONSTRAINT RcKeyI REFERENCES Invoices (Invoice_Id),
            Receipt_Date DATE, Receipt_Amount CURRENCY, Receipt_Method TEXT, Receipt_Notes TEXT);)"),

        table_step("TmpTerms", "Tmp_Terms", R"(CREATE TABLE Tmp_Terms (
            Tmp_Term_id LONG CONSTRAINT TKeyT REFERENCES Term_Dates (Term_Id));)"),
        table_step("TmpCourses", "Tmp_Courses", R"(CREATE TABLE Tmp_Courses (
            Tmp_Course_id LONG CONSTRAINT TKeyC REFERENCES Courses (Course_Id));)"),
        table_step("TmpActivities", "Tmp_Activities", R"(CREATE TABLE Tmp_Activities (
            Tmp_Activity_id LONG CONSTRAINT TKeyA REFERENCES Exams (Exam_Id), Tmp_Date DATE);)"),
        table_step("TmpPupils", "Tmp_Pupils", R"(CREATE TABLE Tmp_Pupils (
            Tmp_Pupil_id LONG CONSTRAINT TKeyP REFERENCES Pupils (Pupil_Id),
            Tmp_Family_id LONG CONSTRAINT TKeyF REFERENCES Families (Family_Id));)"),
        table_step("TmpInvoices", "Tmp_Invoices", R"(CREATE TABLE Tmp_Invoices (
            Tmp_Invoice_id LONG CONSTRAINT TKeyI REFERENCES Invoices (Invoice_Id));)"),
        table_step("TmpCourseCosts", "Tmp_CourseCosts", R"(CREATE TABLE Tmp_CourseCosts (
            Tmp_Course_id LONG NOT NULL CONSTRAINT TCCKeyC REFERENCES Courses (Course_Id),
            Tmp_Term_id LONG NOT NULL CONSTRAINT TCCKeyT REFERENCES Term_Dates (Term_Id),
            Tmp_Cost CURRENCY,
            CONSTRAINT TCC_Primary PRIMARY KEY (Tmp_Course_id, Tmp_Term_id));)"),
    };
}

}  // namespace

const std::vector<SchemaStep>& core_table_steps()
{
    static const std::vector<SchemaStep> steps = make_core_steps();
    return steps;
}

const std::vector<SchemaStep>& invoicing_table_steps()
{
    static const std::vector<SchemaStep> steps = make_invoicing_steps();
    return steps;
}

const SchemaStep* step_creating(const QString& object)
{
    for (const auto* steps : {&core_table_steps(), &invoicing_table_steps()})
        for (const SchemaStep& step : *steps)
            if (step.object.compare(object, Qt::CaseInsensitive) == 0)
                return &step;
    return nullptr;
}

bool run_step(engine::Database& db, const SchemaStep& step)
{
    if (!db.execute_native(step.sql))
        return false;
    return step.table.isEmpty() || db.apply_conventions(step.table);
}

QString with_text_collation(const QString& definition)
{
    static const QRegularExpression text_word(QStringLiteral(R"(\bTEXT\b(\s*\(\s*\d+\s*\))?)"),
                                              QRegularExpression::CaseInsensitiveOption);
    QString result;
    qsizetype copied = 0;
    auto it = text_word.globalMatch(definition);
    while (it.hasNext()) {
        const auto match = it.next();
        const QString length = match.captured(1).isEmpty() ? QStringLiteral("(255)") : match.captured(1).remove(QLatin1Char(' '));
        result += definition.mid(copied, match.capturedStart() - copied);
        result += QStringLiteral("TEXT") + length + QStringLiteral(" COLLATE NOCASE");
        copied = match.capturedEnd();
    }
    result += definition.mid(copied);
    return result;
}

}  // namespace schema
