#pragma once
// Pupils and their families read from a comma-separated file (csv_records.h):
// one pupil a line, 27 fields in a fixed order, an optional line of headers
// first. A line whose first name and family name match a pupil already
// stored brings that pupil and family up to date, writing only the fields
// that aren't blank; any other line adds a new family with its pupil.
//
// A line that can't be taken is refused with its line number and the reason;
// whoever runs the import decides whether to skip it and go on, or to stop.
// A file that can't be read to its end (a quote never closed) is reported
// and abandoned.
// The whole import is one transaction: a stop, a cancel, or a file that can't
// be read to its end leaves the database exactly as it was. Each line is a
// transaction inside it, so a line skipped leaves nothing of itself.
//
// Failures are reported with the module tag "fpupimp".

#include <QString>
#include <QStringList>
#include <array>
#include <functional>

namespace pupil_import {

inline constexpr int Field_Count = 27;

// The fields of a line, in their order in the file.
enum Field : int {
    First_Name,
    Family_Name,
    Alt_Surname,
    Birth_Date,
    Gender,
    Pupil_Marker,
    Medical,
    Special_Needs,
    E_Mail,
    Ethnicity,
    Pupil_Notes,
    Ref1,
    Ref2,
    Ref3,
    Ref4,
    Start_Date,
    Regn_Fee,
    Address1,
    Address2,
    Address3,
    Address4,
    Post_Code,
    Phone_1,
    Phone_2,
    Family_Notes,
    Family_Marker,
    Correspondence,
};

using Record = std::array<QString, Field_Count>;

// The answer to "Is this the header record?".
enum class HeaderAnswer { Header, Data, Stop };

// How a run asks and tells whoever runs it. Every member may be left empty:
// then the first line is data, a refused line stops the import, and nothing
// is shown.
struct ImportHooks {
    // The first line read: is it the header?
    std::function<HeaderAnswer(const Record&)> first_record;
    // A refused line: the message ("Error detected in Import File <file> at
    // line <n>", a line break and the reason). True skips the line and goes
    // on; false stops the import.
    std::function<bool(const QString& message)> refused;
    // Each line about to be stored.
    std::function<void(const Record&)> processing;
    // After each line: a chance for the screen to let a Cancel be pressed.
    std::function<void()> between_records;
};

// The questions as the screen asks them, in message boxes.
// "Is this the header record?" (Yes, No, Cancel).
HeaderAnswer Ask_Header_Question();
// "Error detected ... Contine?" (Yes, No). Yes writes the message to the log
// so that the skipped lines can be looked at afterwards.
bool Import_Error(const QString& message);
// Writes a refused line's message to the log, as passed over.
void Log_Passed_Over(const QString& message);

enum class ImportEnd {
    Processed,  // read to the end and committed
    Cancelled,  // stopped by the user: nothing kept
    Abandoned,  // the file or the database failed: nothing kept
};

struct ImportOutcome {
    ImportEnd end = ImportEnd::Abandoned;
    QString status;        // the status line's words
    int added = 0;         // pupils added, each with a new family
    int updated = 0;       // pupils (and their families) brought up to date
    int skipped = 0;       // lines refused and passed over
    QString stopped_by;    // the refusal that ended the import, when one did
};

class PupilImport {
public:
    // Reads the file and stores its pupils in the current database.
    ImportOutcome run(const QString& file_name, const ImportHooks& hooks);

    // The state of the run: the line being read (the file's line, counting
    // the header), whether the user asked to stop (it takes effect at the
    // next line), whether the first line was the header, and whether a run
    // is going on.
    int Import_Line = 0;
    bool Import_Stop = false;
    bool Import_Header = false;
    bool Import_Running = false;
};

// The reasons a line is refused for before anything is written, in the
// order they are looked for; empty when the line may be stored.
QString Check_Record(const Record& record);

}  // namespace pupil_import
