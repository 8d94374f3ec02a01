// The screen tests need one QApplication for the whole run; GoogleTest's own
// main makes none, so a global environment does.

#include <QApplication>
#include <QByteArray>

#include <gtest/gtest.h>

namespace {

// The offscreen platform can't raise windows or pass a window's size limits
// on, and says so each time; that says nothing about the screens.
QtMessageHandler standard_handler = nullptr;

void quiet_about_raise(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (message.contains(QLatin1String("does not support raise()"))
        || message.contains(QLatin1String("does not support propagateSizeHints()")))
        return;
    standard_handler(type, context, message);  // Qt hands back its own handler when none was installed
}

class QtApplicationEnvironment : public ::testing::Environment {
public:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", QByteArray("offscreen"));
        standard_handler = qInstallMessageHandler(quiet_about_raise);
        app_ = new QApplication(argc_, argv_);
    }
    void TearDown() override
    {
        delete app_;
        app_ = nullptr;
    }

private:
    int argc_ = 1;
    char name_[8] = "test_ui";
    char* argv_[2] = {name_, nullptr};
    QApplication* app_ = nullptr;
};

[[maybe_unused]] ::testing::Environment* const registered =
    ::testing::AddGlobalTestEnvironment(new QtApplicationEnvironment);

}  // namespace
