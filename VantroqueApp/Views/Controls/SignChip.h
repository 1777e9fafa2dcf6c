#pragma once

#include "Records/Report.h"

#include <QWidget>

#include <variant>

namespace vantroque {

/// The sign over a page as an outline on a small rounded ground: a verdict, or the state of a file.
class SignChip : public QWidget {
public:
    explicit SignChip(QWidget* parent = nullptr);

    void setVerdict(Verdict verdict);
    /// An icon of the quiet kind, and what it means.
    void setIcon(const QString& icon, const QString& meaning);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::variant<Verdict, QString> m_sign;
};

} // namespace vantroque
