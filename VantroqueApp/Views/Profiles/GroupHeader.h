#pragma once

#include "VantroqueApp/Views/Profiles/ProfileRows.h"

#include <QWidget>

class QPushButton;

namespace vantroque {

/// Over the platforms of a group: how many of them are chosen, and all or none of them.
class GroupHeader : public QWidget {
    Q_OBJECT

public:
    /// `rows` must outlive it.
    GroupHeader(ProfileRows& rows, ProfileGroup group, QWidget* parent = nullptr);

    ProfileGroup group() const { return m_group; }
    /// Takes on what was chosen, searched for or folded.
    void refresh();

Q_SIGNALS:
    void pressed(); ///< Not on All or None.

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    class Title;

    QPushButton* link(const QString& text, bool on);

    ProfileRows& m_rows;
    const ProfileGroup m_group;
    Title* m_title;
    QPushButton* m_all;
    QPushButton* m_none;
};

} // namespace vantroque
