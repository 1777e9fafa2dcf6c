#pragma once

#include "VantroqueApp/Model/AppModel.h"

#include <QWidget>

class QLabel;

namespace vantroque {

class DropWell;

/// The list of files, where more can be dropped, and how many they are.
class Sidebar : public QWidget {
    Q_OBJECT

public:
    static constexpr int narrowest = 220;
    static constexpr int usual = 280;
    static constexpr int widest = 360;

    explicit Sidebar(AppModel& model, QWidget* parent = nullptr);
    DropWell& well() { return *m_well; }

Q_SIGNALS:
    void addPressed();

private:
    QWidget* foot();
    void refresh();

    AppModel& m_model;
    DropWell* m_well;
    QLabel* m_platforms;
    QLabel* m_count;
};

} // namespace vantroque
