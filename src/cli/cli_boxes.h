#pragma once
// How the command-line tool answers the program's questions.

namespace cli {
enum class Answer { Default, Yes, No };
// Prints each box to standard error as "box: <text>" and answers questions
// with the chosen answer (or the box's default button).
void install_box_answers(Answer answer);
}  // namespace cli
