#pragma once
// What the Change Default Filenames screen checks and applies, without
// widgets: the eight locations (report output, report formats and report
// list, scripts folder, log file, the three invoicing scripts) and whether
// they are kept per school (in the database's Sys_tab) or shared by all
// schools (in the settings). Refusals come as message boxes.

#include <QString>
#include <QtGlobal>
#include <array>
#include <utility>

namespace change_defaults {

// The rows of the screen, top to bottom.
enum Row { Report_dir, Repfmt_dir, RepLst_File, user_dir, logfile, CrTermInv_File, CrActInv_File, CrCosts_File, Row_Count };

enum class Kind { Directory, File, Log };
Kind kind_of(Row row);

struct Locations {
    std::array<QString, Row_Count> values;
    quint8 store = 2;  // $FL: 1 different values for each school, 2 the same for all
    friend bool operator==(const Locations&, const Locations&) = default;
};

// The values in force, from the program's settings.
Locations In_Force();
// The program's own defaults for the eight rows (the store is not one of them).
Locations Program_Defaults();

// The check made when a row's box is left: a changed folder must exist, a
// changed script or report list must be there, a changed log file must be
// new and writable. A refusal is shown (except a file simply not there,
// which only keeps the focus). True when the text may stand.
bool Check_New_Value(Row row, const QString& text, const QString& in_force);

// Applies `wanted` in one step, as the values now in force: shared values go
// to the settings; per-school ones put the folders and log in the settings
// and the files into the open database. Nothing is written, or logged, when
// nothing changed. True when the screen may close.
bool Apply_New_Values(const Locations& in_force, const Locations& wanted);

// The file selector's filter for a row ("Script Files (*.sql)", "*.sql").
std::pair<QString, QString> Select_Filter(Row row);

}  // namespace change_defaults
