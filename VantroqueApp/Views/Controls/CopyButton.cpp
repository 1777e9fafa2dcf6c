#include "VantroqueApp/Views/Controls/CopyButton.h"

#include "VantroqueApp/Views/Style/Icons.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTimer>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString said()
{
    return u"Copied"_s;
}

} // namespace

CopyButton::CopyButton(const QString& title, QWidget* parent)
    : QPushButton(title, parent), m_title(title), m_said(new QTimer(this))
{
    constexpr int signSize = 14;
    Icons::give(*this, u"copy"_s, signSize);
    setFocusPolicy(Qt::TabFocus);
    setAutoDefault(true); // so that Return presses it: the space bar plays
    m_said->setSingleShot(true);
    connect(m_said, &QTimer::timeout, this, &CopyButton::offer);
    connect(this, &QPushButton::clicked, this, &CopyButton::copy);
}

/// Of the longer of its words, so that what stands beside it stays.
QSize CopyButton::sizeHint() const
{
    const auto wide = [this](const QString& words) {
        return fontMetrics().horizontalAdvance(words);
    };
    const int longer = std::max(wide(m_title), wide(said()));
    return QPushButton::sizeHint() + QSize(longer - wide(text()), 0);
}

void CopyButton::copy()
{
    constexpr int milliseconds = 1500;
    QGuiApplication::clipboard()->setText(m_copied);
    setText(said());
    m_said->start(milliseconds);
}

} // namespace vantroque
