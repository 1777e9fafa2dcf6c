#pragma once

#include "Records/Report.h"

#include <QWidget>

class QLabel;

namespace vantroque {

class ElidedLabel;
class SignChip;

/// The verdict on the file in one line, and what the file is.
class SummaryHeader : public QWidget {
public:
    explicit SummaryHeader(QWidget* parent = nullptr);
    /// `problems` is how many there are, in words.
    void show(const FileReport& report, const QString& problems);

private:
    SignChip* m_chip;
    QLabel* m_headline;
    QLabel* m_subhead;
    QLabel* m_note;
    ElidedLabel* m_name;
    ElidedLabel* m_summary;
};

} // namespace vantroque
