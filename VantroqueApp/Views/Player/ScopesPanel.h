#pragma once

#include "VantroqueApp/Model/Playback/ScopeFeed.h"

#include <QWidget>

namespace vantroque {

/// The scopes that are on, each under its title and with its scale: in a column beside the notes,
/// where the pane is narrow in a strip above them, or on a desk for reviewing in a row.
class ScopesPanel : public QWidget {
    Q_OBJECT

public:
    enum class Form { column, strip, desk };

    explicit ScopesPanel(ScopeFeed& scopes, QWidget* parent = nullptr);

    void setForm(Form form);
    /// There is something to show.
    bool hasScopes() const;

Q_SIGNALS:
    void scopesChanged(); ///< Others are on.

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    enum class Kind { waveform, parade, vectorscope };
    struct Scope {
        Kind kind;
        QImage image;
        QRect place; ///< Of the image.
    };

    std::vector<Scope> scopes() const;
    QSize sizeOf(Kind kind) const;
    QImage imageOf(Kind kind) const;
    void fit();
    void paint(QPainter& painter, const Scope& scope) const;
    void paintLetters(QPainter& painter, const QRect& place) const;

    ScopeFeed& m_scopes;
    Form m_form = Form::column;
};

} // namespace vantroque
