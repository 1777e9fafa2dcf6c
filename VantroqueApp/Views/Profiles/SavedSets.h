#pragma once

#include "VantroqueApp/Model/Choices/ProfileSets.h"

#include <QWidget>

#include <optional>
#include <vector>

class QLineEdit;
class QPushButton;

namespace vantroque {

class SetChip;

/// The choices that have names, as chips that wrap, and where the present one gets a name. As high
/// as they need at its fixed width.
class SavedSets : public QWidget {
    Q_OBJECT

public:
    /// `sets` must outlive it.
    SavedSets(ProfileSets& sets, int width, QWidget* parent = nullptr);

    bool isNaming() const;
    /// Gives up the name that is being typed.
    void stopNaming();

Q_SIGNALS:
    void heightChanged();

private:
    void refill();
    void addChips();
    void startNaming(std::optional<std::size_t> renamed);
    void takeName();
    bool isShown() const;
    void arrange();

    ProfileSets& m_sets;
    std::vector<SetChip*> m_chips;
    QPushButton* m_save;
    QLineEdit* m_name;
    std::optional<std::size_t> m_renamed; ///< None when a new set is named.
};

} // namespace vantroque
