#pragma once

#include "Records/Report.h"

#include <QWidget>

#include <variant>

namespace vantroque {

/// An icon that stands beside words: a tool's in the quiet colour of text, or a verdict's sign.
class Glyph : public QWidget {
public:
    Glyph(const QString& icon, int size, QWidget* parent = nullptr);
    Glyph(Verdict verdict, int size, QWidget* parent = nullptr);
    /// A large icon on a rounded card.
    static QWidget* chip(const QString& icon, QWidget* parent = nullptr);

    void setVerdict(Verdict verdict);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::variant<QString, Verdict> m_sign;
};

} // namespace vantroque
