// The toolkit's logic needs no widgets, but the application's folder comes
// from the application object, so one is made for the run.

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace {

class CoreApplicationEnvironment : public ::testing::Environment {
public:
    void SetUp() override { app_ = new QCoreApplication(argc_, argv_); }
    void TearDown() override
    {
        delete app_;
        app_ = nullptr;
    }

private:
    int argc_ = 1;
    char name_[13] = "test_toolkit";
    char* argv_[2] = {name_, nullptr};
    QCoreApplication* app_ = nullptr;
};

[[maybe_unused]] ::testing::Environment* const registered =
    ::testing::AddGlobalTestEnvironment(new CoreApplicationEnvironment);

}  // namespace
