#pragma once
// The line types of a script file and the collecting of statements: which
// line is a keyword, and where a statement ends. Nothing here touches the
// database, so the language's rules can be tested on their own.

#include <QString>
#include <optional>

enum class ScriptLineKind {
    Empty,             // nothing after trimming: counted, otherwise ignored
    Comment,           // "comment ..."
    Display,           // "display <text>": the status text becomes <text>
    OnErrorContinue,   // "on error cont...": failures are logged and the file goes on
    OnErrorEnd,        // "on error end": failures ask again
    Question,          // "question <text>": Yes goes on, No stops the run
    Statement,         // anything else: part of a statement
};

struct ScriptLine {
    ScriptLineKind kind = ScriptLineKind::Empty;
    // Display and question lines: their text. The keyword and the one
    // character after it are dropped, whatever that character is.
    QString text;
};

// Classifies a line that has already been trimmed. Keywords are matched on
// the line's first characters, in lower case; what follows them is free.
ScriptLine classify_script_line(const QString& trimmed_line);

// Builds statements from statement lines. A line without ";" is appended with
// one blank after it. At the first ";" the statement is complete; whatever
// follows that ";" starts the next statement as it stands: it is not searched
// for another ";", and the next line joins it with no blank between.
class StatementCollector {
public:
    // Adds one statement line; gives the completed statement when the line held a ";".
    std::optional<QString> add(const QString& trimmed_line);
    // What has been collected towards the next statement.
    const QString& pending() const { return pending_; }

private:
    QString pending_;
};
