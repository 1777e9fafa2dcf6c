#pragma once

#include <QWidget>

namespace vantroque {

/// A card with an instrument. Instruments stay dark in every look, as their colours mean something.
class InstrumentPanel : public QWidget {
    Q_OBJECT

public:
    /// `title` is in capitals.
    InstrumentPanel(QString title, int contentHeight, QWidget* parent = nullptr);

    static constexpr int padding = 12;

protected:
    void paintEvent(QPaintEvent* event) override;
    /// Draws under the title, in `content`.
    virtual void paintContent(QPainter& painter, const QRect& content) = 0;
    /// Beside the title, at the right.
    void setNote(const QString& note);
    void setContentHeight(int height);
    static int panelHeight(int contentHeight);
    QRect contentArea() const;

private:
    const QString m_title;
    QString m_note;
};

} // namespace vantroque
