#pragma once

#include "Records/Report.h"

#include <QWidget>

class QLabel;

namespace vantroque {

/// Over the platforms: how many there are, how many refuse the file and how many take it.
class PlatformsHeading : public QWidget {
public:
    explicit PlatformsHeading(QWidget* parent = nullptr);
    void show(const FileReport& report);

private:
    QLabel* m_count;
    QLabel* m_outcome;
};

} // namespace vantroque
