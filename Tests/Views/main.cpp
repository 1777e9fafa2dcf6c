#include "Support/TestFolder.h"
#include "VantroqueApp/Views/Controls/FocusRing.h"
#include "VantroqueApp/Views/Style/Look.h"

#include <QApplication>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // Needs no screen, unless a run says which one to take.
    const vantroque::TestFolder folder;
    const auto screens =
        folder.write("screens", R"({"screens":[{"name":"one","x":0,"y":0,"width":1040,"height":800,
                                                "logicalDpi":96,"dpr":1}]})");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QByteArray::fromStdString(screens));
    const QApplication application(argc, argv);
    vantroque::Look::begin();
    const vantroque::FocusRing ring;
    return RUN_ALL_TESTS();
}
