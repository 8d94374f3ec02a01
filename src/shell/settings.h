#pragma once
// The per-user settings: their record, defaults, reading (with the first-run
// question) and writing. They live in section "Startup" of the settings store,
// all values as text; the course order query is kept there by its number.

#include "shell/course_order_query.h"
#include "shell/install_folder.h"

#include <QString>
#include <QtGlobal>

struct SettingsRecord {
    QString default_database;   // $DF
    QString log_file;           // $LF
    QString report_output_dir;  // $GD
    QString report_format_dir;  // $XD
    QString report_list;        // $RL
    QString script_dir;         // $UD
    QString term_script;        // $CT
    QString activity_script;    // $CA
    QString cost_script;        // $CC
    quint8 file_locations = 0;  // $FL: 1 kept in the database, 2 in the settings
    QString course_query;       // $CQ, by name
};

namespace settings_key {
inline constexpr char Section[] = "Startup";
inline constexpr char DF[] = "$DF";
inline constexpr char LF[] = "$LF";
inline constexpr char GD[] = "$GD";
inline constexpr char XD[] = "$XD";
inline constexpr char RL[] = "$RL";
inline constexpr char UD[] = "$UD";
inline constexpr char CT[] = "$CT";
inline constexpr char CA[] = "$CA";
inline constexpr char CC[] = "$CC";
inline constexpr char FL[] = "$FL";
inline constexpr char CQ[] = "$CQ";
}  // namespace settings_key

// The program's settings, held for its whole life.
SettingsRecord& Settings();

// The defaults, laid out under Install_Folder().
void Default_Settings(SettingsRecord& settings);

// Fills Settings() from the store. When the section is empty (a first run)
// asks whether this is the first run: Yes writes the defaults, No (or a
// failure to write) sets Abort_Flag().
void Read_Settings();

// Writes the given values, in the order $GD $XD $RL $UD $LF $CT $CA $CC $FL $CQ,
// into the store and `settings`; unless allow_empty, empty values (and a zero
// file_locations) are left alone. Stops at the first failure, reports it and
// gives false; what was written stays written.
bool Replace_Defaults(bool allow_empty, const QString& report_output_dir, const QString& report_format_dir,
                      const QString& report_list, const QString& script_dir, const QString& log_file,
                      const QString& term_script, const QString& activity_script, const QString& cost_script,
                      const QString& course_query, quint8 file_locations, SettingsRecord& settings);

// Writes $DF and announces the new default database.
bool Set_Default_Database(const QString& name);
