#pragma once
// The command-line tool run as scripts run it: the real program, its exit
// status, what it printed, with settings of its own in the test's folder.
// Header-only because the tool's path is given to each test program.

#include <QProcess>
#include <QString>
#include <QStringList>
#include <gtest/gtest.h>
#include <memory>

namespace testing_support {

struct CliRun {
    int status = -1;
    QString out;
    QString err;
};

class CliRunner {
public:
    explicit CliRunner(const QString& config_folder)
    {
        env_ = QProcessEnvironment::systemEnvironment();
        env_.insert(QStringLiteral("XDG_CONFIG_HOME"), config_folder);
    }

    // Runs the tool to its end.
    CliRun run(const QStringList& args) const { return finish(*start(args)); }

    // Starts the tool and leaves it running, for runs that overlap.
    std::unique_ptr<QProcess> start(const QStringList& args) const
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(env_);
        process->start(QStringLiteral(QUILLARY_CLI_PATH), args);
        EXPECT_TRUE(process->waitForStarted(10000));
        return process;
    }

    static CliRun finish(QProcess& process)
    {
        EXPECT_TRUE(process.waitForFinished(60000));
        return CliRun{process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                      QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
    }

private:
    QProcessEnvironment env_;
};

}  // namespace testing_support
