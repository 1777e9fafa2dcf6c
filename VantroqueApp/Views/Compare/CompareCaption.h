#pragma once

#include "Base/FileUrl.h"
#include "VantroqueApp/Model/Compare/CompareController.h"

#include <QWidget>

class QLabel;
class QToolButton;

namespace vantroque {

class ElidedLabel;
class Scrubber;

/// Under the picture of a version: its name, what it is, the decision about it, and what is done
/// with it alone.
class CompareCaption : public QWidget {
    Q_OBJECT

public:
    static constexpr int high = 74;

    /// Both must outlive it.
    CompareCaption(CompareController& compare, CompareTile& tile, QWidget* parent = nullptr);

    /// "A" or "B" before the name; empty for neither.
    void setLetter(const QString& letter);
    /// Said after the size of the picture, such as how it was fitted.
    void setWords(const QStringList& words);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* firstLine();
    QWidget* secondLine();
    QWidget* tools();
    void showTile();
    void showPlace();
    void showSolo();

    CompareController& m_compare;
    CompareTile& m_tile;
    QLabel* m_letter;
    ElidedLabel* m_name;
    ElidedLabel* m_line;
    QLabel* m_signOff;
    QToolButton* m_solo;
    Scrubber* m_place;
    QToolButton* m_sync;
    QStringList m_words;
};

} // namespace vantroque
