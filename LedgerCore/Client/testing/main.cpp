#include <QCoreApplication>
#include <gtest/gtest.h>

/// The test programs that need an event loop but no screen.
int main(int count, char** arguments)
{
    testing::InitGoogleTest(&count, arguments);
    const QCoreApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
