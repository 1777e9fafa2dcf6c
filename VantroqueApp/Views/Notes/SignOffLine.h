#pragma once

#include "Records/FileReview.h"

#include <QWidget>

class QBoxLayout;
class QPushButton;

namespace vantroque {

class ElidedLabel;

/// The decision on the file, and the buttons that make it. In a narrow panel the buttons stand
/// below the words.
class SignOffLine : public QWidget {
    Q_OBJECT

public:
    explicit SignOffLine(QWidget* parent = nullptr);

    /// `open`: decisions can be kept.
    void show(const FileReview* review, bool open);
    /// Keeps to one line, however narrow it is.
    void setOneLine(bool oneLine);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

Q_SIGNALS:
    void decided(const std::optional<vantroque::ReviewSignOff::Decision>& decision);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QPushButton* decisionButton(ReviewSignOff::Decision decision);
    bool fits(int width) const;
    void arrange();

    ElidedLabel* m_words;
    QPushButton* m_approve;
    QPushButton* m_revise;
    QPushButton* m_clear;
    QBoxLayout* m_layout;
    std::optional<ReviewSignOff::Decision> m_decision;
    bool m_oneLine = false;
};

} // namespace vantroque
