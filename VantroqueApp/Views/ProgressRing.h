#pragma once

#include <QWidget>

namespace vantroque {

/// The share of an analysis that is over, as a ring with its percentage.
class ProgressRing : public QWidget {
    Q_OBJECT

public:
    explicit ProgressRing(QWidget* parent = nullptr);
    void setFraction(double fraction);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double m_fraction = 0;
};

/// The same as a bar.
class ProgressLine : public QWidget {
public:
    explicit ProgressLine(QWidget* parent = nullptr);
    void setFraction(double fraction);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double m_fraction = 0;
};

} // namespace vantroque
