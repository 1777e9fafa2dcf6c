#include "VantroqueApp/Views/Player/MoreMenu.h"

#include "Base/Text.h"
#include "Captions/EmbeddedCaptions.h"
#include "VantroqueApp/Views/Controls/MenuHeading.h"

#include <QActionGroup>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// How many cues there are, and from when to when.
QString summary(const CaptionHealth& health, FrameRate rate)
{
    QString line =
        u"%1 cue%2"_s.arg(QString::number(health.cueCount), Text::plural(health.cueCount));
    if (health.first && health.last)
        line += u", %1 to %2"_s.arg(Timecode::fromSeconds(*health.first, rate).text(),
                                    Timecode::fromSeconds(*health.last, rate).text());
    return line;
}

} // namespace

MoreMenu::MoreMenu(PlayerController& player, QWidget* parent) : QMenu(parent), m_player(player)
{
    setAccessibleName(u"More"_s);
    setProperty("checklist", true);
    // It says how things are when it opens, and while it is open.
    connect(this, &QMenu::aboutToShow, this, &MoreMenu::refresh);
    connect(&player.captions(), &PlayerCaptions::changed, this, [this] {
        if (isVisible())
            refresh();
    });
    refresh();
}

void MoreMenu::refresh()
{
    clear();
    addAction(u"Export Still"_s, &m_player, [this] { m_player.exportStill(true); });
    addAction(u"Export Clean Still"_s, &m_player, [this] { m_player.exportStill(false); });
    addSeparator();
    addCaptions();
    addEmbedded();
    addCaptionStates();
}

void MoreMenu::addCaptions()
{
    PlayerCaptions& captions = m_player.captions();
    QAction* show = addAction(u"Show Captions"_s);
    show->setCheckable(true);
    show->setChecked(captions.captionsShown());
    show->setEnabled(captions.hasAnyCaptionSource());
    connect(show, &QAction::triggered, &captions, &PlayerCaptions::setCaptionsShown);
    const bool hasFile = captions.captionsURL().has_value();
    addAction(hasFile ? u"Replace Captions"_s : u"Add Captions"_s, &m_player,
              &PlayerController::presentCaptionsPanel);
    addAction(u"Remove Captions"_s, &captions, &PlayerCaptions::removeCaptions)
        ->setEnabled(hasFile);
}

void MoreMenu::addEmbedded()
{
    PlayerCaptions& captions = m_player.captions();
    if (captions.embeddedSources().empty())
        return;
    addSeparator();
    auto* one = new QActionGroup(this);
    connect(this, &QMenu::aboutToHide, one, &QObject::deleteLater);
    for (const EmbeddedCaptionSource& source : captions.embeddedSources()) {
        QAction* action = addAction(EmbeddedCaptions::title(source).replace(u'&', u"&&"_s));
        action->setCheckable(true);
        action->setChecked(captions.captionSource() == PlayerCaptions::CaptionSource(source));
        one->addAction(action);
        connect(action, &QAction::triggered, &captions,
                [&captions, source] { captions.showEmbedded(source); });
    }
}

void MoreMenu::addCaptionStates()
{
    const PlayerCaptions& captions = m_player.captions();
    QStringList lines;
    if (captions.captionsMissing())
        lines << u"The caption file is no longer where it was"_s;
    if (captions.captionsExtracting())
        lines << u"Reading the captions out of the file"_s;
    if (const CaptionHealth* health = captions.captionHealth()) {
        lines << summary(*health, m_player.file().workingRate());
        for (const QString& note : health->notes())
            lines << note;
    }
    if (!lines.isEmpty())
        addSeparator();
    for (const QString& line : lines)
        MenuHeading::add(*this, line);
}

} // namespace vantroque
