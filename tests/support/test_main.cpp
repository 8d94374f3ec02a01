// The one main of every test program. Beyond GoogleTest's own, it makes any
// message box that no test scripted fail the running test: a box nobody
// expected is a behaviour nobody checked. Programs whose own environment
// makes no application object get a core one (the application's folder
// comes from it).

#include "engine/msg_box.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace {

class CoreApplicationEnvironment : public ::testing::Environment {
public:
    void SetUp() override
    {
        if (!QCoreApplication::instance())
            app_ = new QCoreApplication(argc_, argv_);
    }
    void TearDown() override { delete app_; }

private:
    int argc_ = 1;
    char name_[5] = "test";
    char* argv_[2] = {name_, nullptr};
    QCoreApplication* app_ = nullptr;
};

int fail_unscripted_box(const QString& text, int style, const QString&)
{
    ADD_FAILURE() << "Message box nobody scripted: " << text.toStdString();
    return engine::default_answer(style);
}

}  // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    engine::set_msgbox_responder(fail_unscripted_box);
    ::testing::AddGlobalTestEnvironment(new CoreApplicationEnvironment);
    return RUN_ALL_TESTS();
}
