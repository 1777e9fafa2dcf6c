#pragma once

#include "VantroqueApp/Model/Choices/ProfileChoice.h"

#include <QWidget>

class QLabel;

namespace vantroque {

class CopyButton;

/// Below the platforms: the way to the operator's own profiles, and what is wrong with one.
class OwnProfilesFoot : public QWidget {
    Q_OBJECT

public:
    /// `choice` must outlive it.
    explicit OwnProfilesFoot(const ProfileChoice& choice, QWidget* parent = nullptr);

    /// What it needs at that width.
    int heightAt(int width) const;

Q_SIGNALS:
    void heightChanged();

private:
    QWidget* problemBlock();
    QWidget* line();
    void openFolder();
    void refresh();
    void showProblem(const QString& problem, const QString& advice);

    const ProfileChoice& m_choice;
    QWidget* m_block = nullptr; ///< Seen while something is wrong.
    QLabel* m_problem = nullptr;
    QLabel* m_advice = nullptr;
    CopyButton* m_copy = nullptr;
    QLabel* m_count = nullptr;
};

} // namespace vantroque
