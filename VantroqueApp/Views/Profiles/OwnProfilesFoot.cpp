#include "VantroqueApp/Views/Profiles/OwnProfilesFoot.h"

#include "Base/FileUrl.h"
#include "Base/Files.h"
#include "Base/Text.h"
#include "VantroqueApp/Views/Controls/CopyButton.h"
#include "VantroqueApp/Views/Controls/Glyph.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QBoxLayout>
#include <QDesktopServices>
#include <QLabel>
#include <QUrl>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 12;
constexpr int lineHeight = 40;

/// Safe to be shown, and with places to break lines at: paths have no spaces.
QString shown(const QString& text)
{
    return Text::joined(text.split(u'\n'), u"\n"_s, Text::printable).replace(u'/', u"/\u200b"_s);
}

QString folderName()
{
    return FileUrl::fromPath(OwnProfiles::folder()).displayPath();
}

} // namespace

OwnProfilesFoot::OwnProfilesFoot(const ProfileChoice& choice, QWidget* parent)
    : QWidget(parent), m_choice(choice)
{
    setObjectName(u"panelFoot"_s);
    setAttribute(Qt::WA_StyledBackground);
    setAccessibleName(u"Profiles of your own"_s);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 1, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(problemBlock());
    layout->addWidget(line());
    connect(&choice, &ProfileChoice::renewed, this, &OwnProfilesFoot::refresh);
    refresh();
}

QWidget* OwnProfilesFoot::problemBlock()
{
    constexpr int glyph = 14;
    m_block = new QWidget(this);
    const auto label = [&](int size, Type::Ink ink) {
        auto* made = Type::label({}, size, QFont::Normal, ink, m_block);
        made->setTextFormat(Qt::PlainText);
        made->setWordWrap(true);
        made->setTextInteractionFlags(Qt::TextSelectableByMouse);
        return made;
    };
    m_problem = label(Type::caption, Type::Ink::text1);
    m_advice = label(Type::caption, Type::Ink::text2);
    m_copy = new CopyButton(u"Copy"_s, m_block);
    m_copy->setProperty("kind", u"small"_s);
    m_copy->setFont(Type::text(Type::caption, QFont::Medium));
    m_copy->setFocusPolicy(Qt::TabFocus);
    m_copy->setAccessibleName(u"Copy what is wrong"_s);
    auto* words = new QVBoxLayout;
    words->setSpacing(4);
    words->addWidget(m_problem);
    words->addWidget(m_advice);
    auto* layout = new QHBoxLayout(m_block);
    layout->setContentsMargins(side + 4, 10, side, 2);
    layout->setSpacing(10);
    layout->addWidget(new Glyph(Verdict::warn, glyph, m_block), 0, Qt::AlignTop);
    layout->addLayout(words, 1);
    layout->addWidget(m_copy, 0, Qt::AlignTop);
    return m_block;
}

QWidget* OwnProfilesFoot::line()
{
    auto* line = new QWidget(this);
    line->setFixedHeight(lineHeight);
    auto* open = new QPushButton(u"Open the Folder of Your Own Profiles"_s, line);
    open->setProperty("kind", u"link"_s);
    open->setFont(Type::text(Type::caption, QFont::Medium));
    open->setFocusPolicy(Qt::TabFocus);
    open->setAccessibleName(open->text());
    open->setToolTip(
        u"A profile in %1 stands beside those that came with the program"_s.arg(folderName()));
    connect(open, &QPushButton::clicked, this, &OwnProfilesFoot::openFolder);
    m_count = Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2, line);
    auto* layout = new QHBoxLayout(line);
    layout->setContentsMargins(side - 1, 0, side + 4, 0);
    layout->addWidget(open);
    layout->addStretch();
    layout->addWidget(m_count);
    return line;
}

int OwnProfilesFoot::heightAt(int width) const
{
    return layout()->hasHeightForWidth() ? layout()->heightForWidth(width) : sizeHint().height();
}

void OwnProfilesFoot::openFolder()
{
    if (const auto made = Files::makeFolder(OwnProfiles::folder()); !made)
        return showProblem(made.error().description,
                           u"Profiles of your own are read from there: free the place."_s);
    if (!QDesktopServices::openUrl(QUrl(FileUrl::fromPath(OwnProfiles::folder()).toString())))
        showProblem(u"No program that shows folders was found"_s,
                    u"Profiles of your own are read from "_s + folderName());
}

void OwnProfilesFoot::refresh()
{
    const auto& [profiles, problems] = m_choice.own();
    const auto count = std::ssize(profiles);
    m_count->setText(count == 0 ? u"None yet"_s : u"%1 of yours"_s.arg(count));
    if (problems.empty()) {
        m_block->hide();
        Q_EMIT heightChanged();
        return;
    }
    QString first = problems.front();
    if (const QString folder = folderName() + u'/'; first.startsWith(folder))
        first = first.sliced(folder.size());
    QString problem = first.section(u'\n', 0, 0);
    if (const auto more = std::ssize(problems) - 1; more > 0)
        problem += u"\nand %1 more file%2 that cannot be used"_s.arg(QString::number(more),
                                                                     Text::plural(more));
    showProblem(problem, first.section(u'\n', 1));
    m_copy->setCopied(Text::joined(problems, u"\n"_s));
    m_copy->setToolTip(m_copy->copied());
}

void OwnProfilesFoot::showProblem(const QString& problem, const QString& advice)
{
    m_problem->setText(shown(problem));
    m_advice->setText(shown(advice));
    m_copy->setCopied(problem + u'\n' + advice);
    m_copy->setToolTip(m_copy->copied());
    m_block->show();
    Q_EMIT heightChanged();
}

} // namespace vantroque
