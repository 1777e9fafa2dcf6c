#include "VantroqueApp/Views/Controls/FocusRing.h"
#include "VantroqueApp/Views/Style/Look.h"

#include <QApplication>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // Needs no screen, unless a run says which one to take.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    vantroque::Look::begin();
    const vantroque::FocusRing ring;
    return RUN_ALL_TESTS();
}
