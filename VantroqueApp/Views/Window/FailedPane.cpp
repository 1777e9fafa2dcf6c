#include "VantroqueApp/Views/Window/FailedPane.h"

#include "Base/Text.h"
#include "VantroqueApp/Views/Controls/CopyButton.h"
#include "VantroqueApp/Views/Controls/ElidedLabel.h"
#include "VantroqueApp/Views/Controls/SignChip.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

struct FileFacts {
    bool isThere = false;
    qint64 bytes = 0;
    QDateTime changed;

    static FileFacts of(const FileUrl& url)
    {
        const QFileInfo info(QFile::decodeName(url.path().c_str()));
        return {info.exists(), info.size(), info.lastModified()};
    }
};

/// "94.3 MB · today 14:02"
QString line(const FileFacts& facts)
{
    if (!facts.isThere)
        return u"no longer there"_s;
    const QString day = facts.changed.date() == QDate::currentDate()
                            ? u"today"_s
                            : facts.changed.date().toString(Qt::ISODate);
    return u"%1 · %2 %3"_s.arg(Text::byteCount(facts.bytes), day,
                               facts.changed.time().toString(u"HH:mm"_s));
}

QLabel* wrapped(const QString& text, int pixels, QFont::Weight weight, Type::Ink ink)
{
    QLabel* label = Type::label(text, pixels, weight, ink);
    label->setWordWrap(true);
    return label;
}

QWidget* stepLine(int number, const Trouble::Step& step)
{
    auto* box = new QWidget;
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    QLabel* badge =
        Type::label(QString::number(number), Type::badge, QFont::DemiBold, Type::Ink::text2);
    badge->setObjectName(u"stepBadge"_s);
    badge->setFixedSize(20, 20);
    badge->setAlignment(Qt::AlignCenter);
    layout->addWidget(badge, 0, Qt::AlignTop);
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(wrapped(step.todo, Type::body, QFont::Normal, Type::Ink::text1));
    if (!step.why.isEmpty())
        words->addWidget(wrapped(step.why, Type::caption, QFont::Normal, Type::Ink::text2));
    layout->addLayout(words, 1);
    return box;
}

QFrame* hairline()
{
    auto* line = new QFrame;
    line->setObjectName(u"hairline"_s);
    line->setFixedHeight(1);
    return line;
}

} // namespace

FailedPane::FailedPane(QWidget* parent)
    : QScrollArea(parent),
      m_sentence(wrapped({}, Type::heading, QFont::Normal, Type::Ink::text1)),
      m_name(new ElidedLabel(Type::text(Type::body, QFont::Medium), Qt::ElideMiddle, u"text1"_s)),
      m_facts(Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2)),
      m_steps(new QFrame),
      m_again(new QPushButton(u"Try again"_s)),
      m_copy(new CopyButton(u"Copy details"_s)),
      m_fold(new QPushButton(u"Details"_s)),
      m_tool(Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2)),
      m_words(new QPlainTextEdit)
{
    setAccessibleName(u"Could not analyze this file"_s);
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* page = new QWidget;
    page->setObjectName(u"report"_s); // for its ground
    auto* layout = new QVBoxLayout(page);
    layout->setSpacing(0);
    auto* sign = new SignChip;
    sign->setVerdict(Verdict::warn);
    layout->addWidget(sign, 0, Qt::AlignLeft);
    layout->addSpacing(16);
    layout->addWidget(wrapped(u"Could not analyze this file"_s, Type::headline, QFont::DemiBold,
                              Type::Ink::text1));
    layout->addSpacing(8);
    m_sentence->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_sentence);
    layout->addSpacing(8);
    auto* file = new QHBoxLayout;
    file->setSpacing(8);
    file->addWidget(m_name);
    file->addWidget(m_facts);
    file->addStretch(1);
    layout->addLayout(file);
    layout->addSpacing(18);
    m_steps->setProperty("kind", u"card"_s);
    layout->addWidget(m_steps);
    layout->addSpacing(20);
    layout->addWidget(buttons());
    layout->addSpacing(24);
    m_folded = foldedWords();
    layout->addWidget(m_folded);
    layout->addStretch(1);
    setWidget(page);
}

QWidget* FailedPane::buttons()
{
    auto* box = new QWidget;
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    m_again->setProperty("kind", u"primary"_s);
    m_again->setAutoDefault(true);
    m_again->setToolTip(u"Analyzes the file once more"_s);
    Icons::give(*m_again, u"retry"_s, 16, &Theme::onAccent);
    m_again->setFont(Type::text(Type::body, QFont::DemiBold));
    m_copy->setProperty("kind", u"beside"_s);
    m_copy->setToolTip(u"Copies what happened, for whoever looks into it"_s);
    auto* remove = new QPushButton(u"Remove from List"_s);
    remove->setProperty("kind", u"plain"_s);
    for (QPushButton* button : {m_again, static_cast<QPushButton*>(m_copy), remove})
        layout->addWidget(button);
    layout->addStretch(1);
    connect(m_again, &QPushButton::clicked, this, [this] { Q_EMIT tryAgainPressed(m_id); });
    connect(remove, &QPushButton::clicked, this, [this] { Q_EMIT removePressed(m_id); });
    return box;
}

QWidget* FailedPane::foldedWords()
{
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(hairline());
    auto* head = new QHBoxLayout;
    m_fold->setProperty("kind", u"plain"_s);
    m_fold->setCheckable(true);
    m_fold->setToolTip(u"What the tool said"_s);
    head->addWidget(m_fold);
    head->addStretch(1);
    head->addWidget(m_tool);
    layout->addLayout(head);
    m_words->setObjectName(u"toolWords"_s);
    m_words->setAccessibleName(u"What the tool said"_s);
    m_words->setReadOnly(true);
    m_words->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_words->setTabChangesFocus(true);
    m_words->setFont(Type::mono(Type::caption));
    layout->addWidget(m_words);
    connect(m_fold, &QPushButton::toggled, this, &FailedPane::showWords);
    return box;
}

void FailedPane::show(const FileAnalysis& file)
{
    const auto& reason = std::get<FileAnalysis::Failed>(file.status).reason;
    m_trouble = Trouble::of(reason);
    if (file.id != m_id)
        m_fold->setChecked(false);
    m_id = file.id;
    m_url = file.url;
    m_sentence->setText(m_trouble.sentence);
    m_name->setText(file.url.fileName());
    m_name->setToolTip(file.url.displayPath());
    m_facts->clear();
    m_tool->setText(m_trouble.tool);
    m_words->setPlainText(m_trouble.words);
    m_folded->setVisible(!m_trouble.words.isEmpty());
    showSteps();
    showWords(m_fold->isChecked());
    lookAtFile();
    fit();
}

void FailedPane::showSteps()
{
    delete m_steps->layout();
    qDeleteAll(m_steps->findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
    m_steps->setVisible(!m_trouble.steps.empty());
    auto* layout = new QVBoxLayout(m_steps);
    layout->setContentsMargins(16, 14, 16, 14);
    layout->setSpacing(10);
    QLabel* heading = Type::label(u"WHAT TO DO"_s, Type::badge, QFont::DemiBold, Type::Ink::text2);
    heading->setFont(Type::caps());
    layout->addWidget(heading);
    int number = 0;
    for (const Trouble::Step& step : m_trouble.steps) {
        if (number > 0)
            layout->addWidget(hairline());
        layout->addWidget(stepLine(++number, step));
    }
}

void FailedPane::showWords(bool open)
{
    Icons::give(*m_fold, open ? u"chev"_s : u"chevr"_s, 12);
    m_words->setVisible(open);
    constexpr int mostLines = 16;
    constexpr int padding = 24;
    const int lines = std::min(m_words->blockCount() + 1, mostLines);
    m_words->setFixedHeight(lines * m_words->fontMetrics().lineSpacing() + padding);
}

void FailedPane::lookAtFile()
{
    m_again->setEnabled(true);
    m_copy->setCopied(details({}));
    m_looker.run([url = m_url] { return FileFacts::of(url); },
                 [this, id = m_id](const FileFacts& facts) {
                     if (id != m_id)
                         return;
                     m_facts->setText(line(facts));
                     m_again->setEnabled(facts.isThere);
                     m_copy->setCopied(details(line(facts)));
                 });
}

/// For whoever looks into it.
QString FailedPane::details(const QString& facts) const
{
    QStringList lines{m_url.displayPath(),
                      facts,
                      m_trouble.sentence,
                      m_trouble.tool,
                      QCoreApplication::applicationName() + u' '
                          + QCoreApplication::applicationVersion(),
                      m_trouble.words};
    lines.removeAll({});
    return lines.join(u'\n');
}

void FailedPane::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    fit();
}

/// Long lines are hard to read, and in a low window there is no room to give away.
void FailedPane::fit()
{
    constexpr int widest = 600;
    constexpr int margin = 24;
    constexpr int lowPane = 700;
    constexpr int usualTop = 176;
    constexpr int lowTop = 64;
    const int side = std::max((viewport()->width() - widest) / 2, margin);
    const int top = height() < lowPane ? lowTop : usualTop;
    widget()->layout()->setContentsMargins(side, top, side, margin);
    // Where there is something to scroll, the keyboard must get there.
    const bool scrolls = widget()->heightForWidth(viewport()->width()) > height();
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);
}

} // namespace vantroque
