#pragma once

#include <QFrame>

class QPushButton;

namespace vantroque {

/// Whether the window is for reading reports or for reviewing a film.
class DeskSwitch : public QFrame {
    Q_OBJECT

public:
    explicit DeskSwitch(QWidget* parent = nullptr);

    bool isReview() const;
    /// Without a film there is nothing to review.
    void show(bool review, bool possible);

Q_SIGNALS:
    void chosen(bool review);

private:
    QPushButton* tab(const QString& name, const QString& help, bool review);

    QPushButton* m_report;
    QPushButton* m_review;
};

} // namespace vantroque
