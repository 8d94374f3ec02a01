// The one main of every test program. Beyond GoogleTest's own, it makes any
// message box that no test scripted fail the running test: a box nobody
// expected is a behaviour nobody checked.

#include "engine/msg_box.h"

#include <gtest/gtest.h>

namespace {

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
    return RUN_ALL_TESTS();
}
