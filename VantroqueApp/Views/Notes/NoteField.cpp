#include "VantroqueApp/Views/Notes/NoteField.h"

#include "VantroqueApp/Views/Notes/RowText.h"

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QMimeData>

#include <algorithm>
#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

NoteField::NoteField(QWidget* parent) : QPlainTextEdit(parent)
{
    setAccessibleName(u"Leave a note on this frame"_s);
    setPlaceholderText(u"Leave a note on this frame"_s);
    setFont(RowText::fontFor({}));
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDocumentMargin(0);
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            &NoteField::fit);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (const QFont needed = RowText::fontFor(toPlainText()); needed != font())
            setFont(needed);
    });
    fit();
}

void NoteField::setMostLines(int lines)
{
    if (std::exchange(m_mostLines, lines) != lines)
        fit();
}

void NoteField::fit()
{
    // A document of plain text counts its height in lines.
    const int lines = static_cast<int>(
        std::clamp(document()->size().height(), 1.0, static_cast<double>(m_mostLines)));
    setFixedHeight(static_cast<int>(std::ceil(lines * QFontMetricsF(font()).lineSpacing())) + 2);
}

void NoteField::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    if (event->oldSize().width() != event->size().width())
        fit();
}

void NoteField::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        Q_EMIT cancelRequested();
    else if (isReturn && event->modifiers().testFlag(Qt::ControlModifier))
        Q_EMIT saveRequested();
    else
        QPlainTextEdit::keyPressEvent(event);
    event->accept(); // what is typed here goes nowhere else
}

void NoteField::focusInEvent(QFocusEvent* event)
{
    QPlainTextEdit::focusInEvent(event);
    Q_EMIT entered();
}

/// A menu over it, or another window, does not end the writing.
void NoteField::focusOutEvent(QFocusEvent* event)
{
    QPlainTextEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        Q_EMIT left();
}

/// Files are not notes: the window takes those.
void NoteField::insertFromMimeData(const QMimeData* source)
{
    if (!source->hasUrls())
        QPlainTextEdit::insertFromMimeData(source);
}

} // namespace vantroque
