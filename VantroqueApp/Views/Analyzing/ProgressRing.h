#pragma once

#include <QWidget>

namespace vantroque {

/// The share of an analysis that is over, as a ring with its percentage.
class ProgressRing : public QWidget {
    Q_OBJECT

public:
    explicit ProgressRing(QWidget* parent = nullptr);
    /// What it says.
    void setFraction(double fraction);
    /// How far the ring is drawn, which may be on its way there.
    void setDrawn(double fraction);
    double drawn() const { return m_drawn; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double m_fraction = 0;
    double m_drawn = 0;
};

/// The same as a bar.
class ProgressLine : public QWidget {
public:
    explicit ProgressLine(QWidget* parent = nullptr);
    void setFraction(double fraction);
    void setDrawn(double fraction);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double m_drawn = 0;
};

} // namespace vantroque
