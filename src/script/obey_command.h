#pragma once
// Carries out one complete statement of a script file.

#include <QString>

// Direct SQL (a statement beginning A, C, D, I or U) goes to the engine as
// it stands; a statement beginning Q calls a stored query by name with its
// parameters; anything else is an unknown command, which the user may skip.
// False asks the reader to abandon the file and undo it.
//
// Failures: a failure outside a stored query's execution is logged and, with
// continue_on_error, passed over; otherwise the user chooses between undoing
// the run and going on. A failed execution of a stored query does the same,
// except that a duplicate key (3022) or a missing object (3265) always
// abandons the file, whatever continue_on_error says.
bool Obey_Command(const QString& statement, bool continue_on_error);
