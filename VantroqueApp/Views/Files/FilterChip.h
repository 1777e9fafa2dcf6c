#pragma once

#include "Records/Report.h"

#include <QAbstractButton>

#include <optional>

namespace vantroque {

/// A choice of what the list shows, with how many those are.
class FilterChip : public QAbstractButton {
    Q_OBJECT

public:
    FilterChip(const QString& name, std::optional<Verdict> sign, QWidget* parent = nullptr);

    void setCount(std::size_t count);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    const std::optional<Verdict> m_sign;
    QString m_count;
};

} // namespace vantroque
