#pragma once
// What every command of the command-line tool shares: its output streams,
// the settings it runs with, and opening the database it works on.

#include <QString>
#include <QStringList>
#include <QTextStream>

namespace cli {

QTextStream& out();
QTextStream& err();

// The settings as the program would have them, without the first-run
// question: stored values where there are any, defaults for the rest.
// Also sets the log file and the date formats.
void load_settings();

// Opens the database through the version gate (questions answered as the
// boxes were told); false, with the reason already printed, when it can't.
bool open_database(const QString& name);
// Closes everything the command opened.
void close_all();

// Takes "--name value" out of args; empty when absent. Repeated options give a list.
QStringList take_option(QStringList& args, const QString& name);
bool take_flag(QStringList& args, const QString& name);


}  // namespace cli
