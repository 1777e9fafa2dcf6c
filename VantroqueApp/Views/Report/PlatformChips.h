#pragma once

#include "Check/Problems.h"

#include <QWidget>

namespace vantroque {

/// The platforms that a problem costs, as small buttons that wrap. Tab comes to one of them, arrows
/// go on from there.
class PlatformChips : public QWidget {
    Q_OBJECT

public:
    /// `label` stands before the first.
    PlatformChips(const QString& label, const std::vector<Problem::Platform>& platforms,
                  QWidget* parent = nullptr);

Q_SIGNALS:
    void chosen(const QString& profile);

protected:
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return arranged(width, false); }
    QSize sizeHint() const override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Chip;

    /// Lays the chips out for a width; returns the height. `place` them, or only look.
    int arranged(int width, bool place) const;
    bool step(const QObject* from, bool forward);

    std::vector<QWidget*> m_parts; ///< The label, then the chips.
};

} // namespace vantroque
