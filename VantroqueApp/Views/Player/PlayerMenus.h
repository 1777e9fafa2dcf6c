#pragma once

#include "VantroqueApp/Model/Playback/PlayerController.h"
#include "VantroqueApp/Views/Controls/StayingMenu.h"

#include <functional>
#include <vector>

class QActionGroup;

namespace vantroque {

/// How close the picture is looked at.
class ZoomMenu : public QMenu {
    Q_OBJECT

public:
    explicit ZoomMenu(PictureZoom& zoom, QWidget* parent = nullptr);

    /// "Fit", or the percentage of now.
    static QString current(const PictureZoom& zoom);

private:
    void refresh();

    PictureZoom& m_zoom;
    QActionGroup* m_stops;
};

/// The lines and areas over the picture.
class GuidesMenu : public StayingMenu {
    Q_OBJECT

public:
    /// What pictures of these files can have, each once.
    explicit GuidesMenu(const std::vector<PlayedFile>& files, QWidget* parent = nullptr);

    /// Marks what is chosen.
    void mark(const GuideOptions& options);

Q_SIGNALS:
    void chosen(const vantroque::GuideOptions& options);

private:
    void addSwitch(const QString& text, bool GuideOptions::*option);
    void addZone(const PlatformZone& zone);

    GuideOptions m_options;
    std::vector<std::function<void()>> m_refreshes;
};

/// The video scopes.
class ScopesMenu : public StayingMenu {
    Q_OBJECT

public:
    explicit ScopesMenu(ScopeFeed& scopes, QWidget* parent = nullptr);
};

} // namespace vantroque
