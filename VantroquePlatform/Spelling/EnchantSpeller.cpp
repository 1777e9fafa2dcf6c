#include "VantroquePlatform/Spelling/EnchantSpeller.h"

#include "Base/Text.h"
#include "Captions/LanguageNames.h"
#include "VantroquePlatform/Spelling/LanguageDetector.h"
#include "VantroquePlatform/Spelling/WordLookup.h"
#include "VantroquePlatform/Spelling/WordSplitter.h"

#include <QHash>

#include <algorithm>
#include <enchant.h>
#include <mutex>

namespace vantroque {

using namespace Qt::StringLiterals;
using Range = SpellChecker::Range;

namespace {

std::mutex brokerMutex; ///< Enchant is for one thread at a time.

/// One for the whole program, with the lock held. Its end would unload the engines, while the
/// thread that used them still has a record of their thread-local memory.
EnchantBroker* broker()
{
    static EnchantBroker* const shared = enchant_broker_init();
    return shared;
}

/// What a dictionary does not know of a text.
std::vector<Range> unknownIn(const QString& text, EnchantDict* dictionary, const QString& code)
{
    // Enchant asks the disk for the user's own words each time, and texts repeat theirs.
    QHash<QString, bool> answers;
    const auto has = [&](const QString& word) {
        auto answer = answers.constFind(word);
        if (answer == answers.constEnd()) {
            const QByteArray bytes = word.toUtf8();
            answer = answers.insert(
                word, enchant_dict_check(dictionary, bytes.constData(), bytes.size()) == 0);
        }
        return *answer;
    };
    const WordLookup lookup(has, code);
    std::vector<Range> unknown;
    for (const Range& word : WordSplitter::words(text)) {
        const auto parts = lookup.unknownParts(text, word);
        unknown.insert(unknown.end(), parts.begin(), parts.end());
    }
    return unknown;
}

/// The codes of the forms in which a language is written. Streams and detectors name the language,
/// dictionaries are of a form.
QStringList writtenForms(const QString& code)
{
    if (code == u"no")
        return {u"nb"_s, u"nn"_s};
    return {};
}

/// Those of the tags that are of one of these languages.
QStringList tagsOf(const QStringList& codes, QStringList tags)
{
    tags.removeIf(
        [&](const QString& tag) { return !codes.contains(LanguageNames::bareCode(tag)); });
    return tags;
}

} // namespace

EnchantSpeller::EnchantSpeller(const QLocale& user) : m_user(user)
{
}

EnchantSpeller::~EnchantSpeller()
{
    const std::scoped_lock lock(brokerMutex);
    m_dictionaries.clear();
}

std::optional<QString> EnchantSpeller::language(const std::vector<QString>& texts)
{
    const std::scoped_lock lock(brokerMutex);
    const QString first = texts.empty() ? QString() : LanguageDetector::sample({texts.front()});
    if (auto detected = LanguageDetector::languageOf(first);
        detected && knowsMost(first, *detected))
        return detected;
    if (auto detected = LanguageDetector::languageOf(texts))
        return detected;
    if (auto best = languageWithMostWords(LanguageDetector::sample(texts)))
        return best;
    const QString users = usersCode();
    return users.isEmpty() ? std::nullopt : std::optional(users);
}

std::optional<std::vector<Range>> EnchantSpeller::misspelled(const QString& text,
                                                             const QString& language)
{
    const QString code = LanguageNames::bareCode(language);
    const std::scoped_lock lock(brokerMutex);
    const Dictionary dictionary = kept(code);
    if (!dictionary)
        return std::nullopt;
    return unknownIn(text, dictionary.get(), code);
}

/// Empty in the locale "C", which is no language.
QString EnchantSpeller::usersCode() const
{
    return m_user.language() == QLocale::C ? QString() : LanguageNames::bareCode(m_user.name());
}

/// Tags such as "de_AT", sorted.
QStringList EnchantSpeller::installedTags() const
{
    QStringList tags;
    enchant_broker_list_dicts(
        broker(),
        [](const char* tag, const char*, const char*, const char*, void* list) {
            static_cast<QStringList*>(list)->append(Text::utf8(tag));
        },
        &tags);
    tags.sort();
    return tags;
}

/// The dictionary of the user's own variety of a language, of its usual one, or any that is
/// installed.
EnchantSpeller::Dictionary EnchantSpeller::open(const QString& code) const
{
    const QStringList installed = installedTags();
    QStringList tags = tagsOf({code}, installed);
    if (tags.isEmpty())
        tags = tagsOf(writtenForms(code), installed);
    const QStringList preferred{m_user.name(), QLocale(code).name(), code};
    std::ranges::stable_sort(tags, {}, [&](const QString& tag) {
        const qsizetype place = preferred.indexOf(tag);
        return place < 0 ? preferred.size() : place;
    });
    for (const QString& tag : tags)
        if (EnchantDict* found = enchant_broker_request_dict(broker(), tag.toUtf8().constData()))
            return {found, [](EnchantDict* dictionary) {
                        enchant_broker_free_dict(broker(), dictionary);
                    }};
    return nullptr;
}

/// As `open`, but only once; one that is missing may be installed meanwhile.
EnchantSpeller::Dictionary EnchantSpeller::kept(const QString& code)
{
    Dictionary& dictionary = m_dictionaries[code];
    if (!dictionary)
        dictionary = open(code);
    return dictionary;
}

/// True of sentences in the language, false where few words can mislead.
bool EnchantSpeller::knowsMost(const QString& text, const QString& code)
{
    constexpr qsizetype fewestWords = 6;
    const auto words = std::ssize(WordSplitter::words(text));
    const Dictionary dictionary = kept(code);
    return dictionary && words >= fewestWords
           && 4 * std::ssize(unknownIn(text, dictionary.get(), code)) <= words;
}

/// The user's own language on a tie. Nothing when no dictionary knows any word.
std::optional<QString> EnchantSpeller::languageWithMostWords(const QString& text) const
{
    qsizetype fewestUnknown = std::ssize(WordSplitter::words(text));
    if (fewestUnknown == 0)
        return std::nullopt;
    QStringList codes{usersCode()};
    for (const QString& tag : installedTags())
        codes.append(LanguageNames::bareCode(tag));
    codes.removeDuplicates();
    std::optional<QString> best;
    for (const QString& code : codes)
        if (const Dictionary dictionary = open(code)) {
            const auto unknown = std::ssize(unknownIn(text, dictionary.get(), code));
            if (unknown < fewestUnknown) {
                fewestUnknown = unknown;
                best = code;
            }
        }
    return best;
}

} // namespace vantroque
