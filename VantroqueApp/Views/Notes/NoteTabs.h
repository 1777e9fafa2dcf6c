#pragma once

#include <QFrame>

class QPushButton;

namespace vantroque {

/// The operator's notes, or what the check detected, each with its count.
class NoteTabs : public QFrame {
    Q_OBJECT

public:
    explicit NoteTabs(QWidget* parent = nullptr);

    void setCounts(int notes, int detected);
    bool showsDetected() const;
    void showDetected(bool detected);

Q_SIGNALS:
    void changed();

private:
    QPushButton* tab(const QString& name);

    QPushButton* m_notes;
    QPushButton* m_detected;
};

} // namespace vantroque
