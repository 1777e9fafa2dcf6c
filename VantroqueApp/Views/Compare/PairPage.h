#pragma once

#include "VantroqueApp/Model/Compare/ComparePair.h"

#include <QWidget>

class QHBoxLayout;
class QToolButton;

namespace vantroque {

class CompareCaption;
class PairPicture;

/// A and B laid over each other, with what is known of both below.
class PairPage : public QWidget {
    Q_OBJECT

public:
    /// Both must outlive it.
    PairPage(CompareController& compare, ComparePair& pair, QWidget* parent = nullptr);

    PairPicture& picture() { return *m_picture; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fill();
    void alignCaptions();
    void showWords();

    CompareController& m_compare;
    ComparePair& m_pair;
    PairPicture* m_picture;
    QToolButton* m_swap;
    QHBoxLayout* m_captions;
    CompareCaption* m_captionA = nullptr;
    CompareCaption* m_captionB = nullptr;
};

} // namespace vantroque
