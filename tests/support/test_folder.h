#pragma once
// The temporary folder of one test, holding the settings store and the log
// the program writes while the test runs, so that no test touches the user's.

#include <QString>
#include <QTemporaryDir>

namespace testing_support {

class TestFolder {
public:
    // What the program's settings hold when the test starts.
    enum class StartingSettings { Blank, ProgramDefaults };

    explicit TestFolder(StartingSettings settings = StartingSettings::Blank);
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    QString file(const QString& name) const { return dir_.filePath(name); }
    QString log_text() const;
    // Writes a text file into the folder and gives its path.
    QString write_file(const QString& name, const QString& text) const;

private:
    QTemporaryDir dir_;
};

}  // namespace testing_support
