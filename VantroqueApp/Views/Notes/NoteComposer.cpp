#include "VantroqueApp/Views/Notes/NoteComposer.h"

#include "VantroqueApp/Views/Notes/MarkButton.h"
#include "VantroqueApp/Views/Notes/NoteField.h"
#include "VantroqueApp/Views/Notes/RowText.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>
#include <array>

namespace vantroque {

using namespace Qt::StringLiterals;
using Ink = AnnotationStroke::Ink;

namespace {

struct Tool {
    AnnotationTool tool;
    QString icon;
    QString help;
};

const std::vector<Tool>& tools()
{
    static const std::vector<Tool> all{{AnnotationTool::pointer, u"pointer"_s, u"Pointer"_s},
                                       {AnnotationTool::pen, u"pen"_s, u"Draw freehand"_s},
                                       {AnnotationTool::ellipse, u"circle"_s, u"Draw a circle"_s},
                                       {AnnotationTool::arrow, u"arrow"_s, u"Draw an arrow"_s}};
    return all;
}

constexpr std::array inks{Ink::red, Ink::amber, Ink::white};

QPushButton* button(const QString& text, const QString& kind, const QString& help, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setProperty("kind", kind);
    button->setFont(Type::text(Type::body, QFont::Medium));
    button->setToolTip(help);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAutoDefault(true); // so that Return presses it: the space bar plays
    return button;
}

/// For a row of buttons of one subject.
QWidget* group(const QString& name, QWidget* parent)
{
    auto* box = new QWidget(parent);
    box->setAccessibleName(name);
    box->setToolTip(name);
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return box;
}

MarkButton* addTo(const QWidget& group, MarkButton* button)
{
    button->setCheckable(true);
    button->setAccessibleDescription(group.accessibleName());
    group.layout()->addWidget(button);
    return button;
}

} // namespace

NoteComposer::NoteComposer(Notebook& notebook, QWidget* parent)
    : QFrame(parent),
      m_notebook(notebook),
      m_field(new NoteField(this)),
      m_row(new QWidget(this)),
      m_tools(new QButtonGroup(this)),
      m_inks(new QButtonGroup(this)),
      m_undo(new MarkButton(u"undo"_s, u"Undo the last marking"_s, m_row)),
      m_cancel(button(u"Cancel"_s, u"plain"_s, u"Give this note up  (esc)"_s, m_row)),
      m_save(button(u"Save"_s, u"smallPrimary"_s, u"Keep this note  (Ctrl+Return)"_s, m_row))
{
    setObjectName(u"composer"_s);
    setAccessibleName(u"New note"_s);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 9, 8, 6);
    layout->setSpacing(4);
    layout->addWidget(m_field);
    layout->addWidget(m_row);
    layOutRow();
    for (const auto signal : {&Notebook::draftChanged, &Notebook::opened, &Notebook::reviewChanged})
        connect(&m_notebook, signal, this, &NoteComposer::follow);
    connectField();
    connect(m_save, &QPushButton::clicked, this, &NoteComposer::save);
    connect(m_cancel, &QPushButton::clicked, this, &NoteComposer::cancel);
    follow();
}

void NoteComposer::connectField()
{
    connect(m_field, &QPlainTextEdit::textChanged, this,
            [this] { m_notebook.setDraftText(m_field->toPlainText()); });
    connect(m_field, &NoteField::entered, this, [this] {
        m_notebook.setComposing(true);
        Q_EMIT begun();
    });
    connect(m_field, &NoteField::left, this, &NoteComposer::leave);
    connect(m_field, &NoteField::saveRequested, this, &NoteComposer::save);
    connect(m_field, &NoteField::cancelRequested, this, &NoteComposer::cancel);
}

void NoteComposer::layOutRow()
{
    auto* layout = new QHBoxLayout(m_row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(markings());
    layout->addWidget(m_undo);
    layout->addStretch();
    layout->addWidget(m_cancel);
    layout->addWidget(m_save);
    connect(m_undo, &QAbstractButton::clicked, this, [this] { m_notebook.undoDraftStroke(); });
}

QWidget* NoteComposer::markings()
{
    auto* box = new QWidget(m_row);
    QWidget* toolBox = group(u"Draw on this frame"_s, box);
    for (const Tool& each : tools())
        m_tools->addButton(addTo(*toolBox, new MarkButton(each.icon, each.help, toolBox)),
                           static_cast<int>(each.tool));
    QWidget* inkBox = group(u"Marker color"_s, box);
    for (const Ink ink : inks)
        m_inks->addButton(addTo(*inkBox, new MarkButton(ink, inkBox)), static_cast<int>(ink));
    connect(m_tools, &QButtonGroup::idClicked, this,
            [this](int tool) { m_notebook.setTool(static_cast<AnnotationTool>(tool)); });
    connect(m_inks, &QButtonGroup::idClicked, this,
            [this](int ink) { m_notebook.setInk(static_cast<Ink>(ink)); });
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(toolBox);
    layout->addWidget(inkBox);
    return box;
}

void NoteComposer::setRoom(int height)
{
    constexpr int usual = 112; ///< Of a few lines with the tools below them.
    constexpr int besideText = 48;
    m_isTight = height < usual;
    constexpr int most = 5;
    m_field->setMostLines(std::clamp((height - besideText) / RowText::lineHeight, 1, most));
    follow();
}

void NoteComposer::follow()
{
    setEnabled(m_notebook.isOpen());
    m_row->setVisible(!m_isTight || m_notebook.isComposing());
    if (m_field->toPlainText() != m_notebook.draftText()) {
        const QSignalBlocker quiet(m_field);
        m_field->setPlainText(m_notebook.draftText());
        m_field->moveCursor(QTextCursor::End);
    }
    m_tools->button(static_cast<int>(m_notebook.tool()))->setChecked(true);
    m_inks->button(static_cast<int>(m_notebook.ink()))->setChecked(true);
    m_undo->setEnabled(!m_notebook.draftStrokes().empty());
    const bool isComposing = m_notebook.isComposing() || m_notebook.hasDraft();
    m_cancel->setEnabled(isComposing);
    m_save->setEnabled(isComposing);
}

void NoteComposer::save()
{
    Q_EMIT saveRequested();
    Q_EMIT ended();
}

void NoteComposer::cancel()
{
    m_notebook.discardDraft();
    Q_EMIT ended();
}

/// A note that was not begun keeps nobody from playing on.
void NoteComposer::leave()
{
    if (!m_notebook.hasDraft())
        m_notebook.setComposing(false);
}

} // namespace vantroque
