#pragma once

#include "Captions/SpellChecker.h"

#include <QLocale>
#include <QStringList>

#include <map>
#include <memory>

struct str_enchant_dict;

namespace vantroque {

/// Checks with the dictionaries that are installed and the words that the user has taught them,
/// through Enchant.
class EnchantSpeller : public SpellChecker {
public:
    /// `user` says which variety of a language is preferred, and what texts without words are in.
    explicit EnchantSpeller(const QLocale& user = QLocale::system());
    ~EnchantSpeller() override;

    std::optional<QString> language(const std::vector<QString>& texts) override;
    std::optional<std::vector<Range>> misspelled(const QString& text,
                                                 const QString& language) override;

private:
    using Dictionary = std::shared_ptr<str_enchant_dict>;

    QString usersCode() const;
    QStringList installedTags() const;
    Dictionary open(const QString& code) const;
    Dictionary kept(const QString& code);
    bool knowsMost(const QString& text, const QString& code);
    std::optional<QString> languageWithMostWords(const QString& text) const;

    const QLocale m_user;
    std::map<QString, Dictionary> m_dictionaries; ///< By bare code.
};

} // namespace vantroque
