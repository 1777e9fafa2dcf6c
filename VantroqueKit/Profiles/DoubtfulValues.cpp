#include "Base/RecordCoding.h"
#include "Base/Text.h"
#include "Profiles/PlatformZones.h"
#include "Profiles/ProfileDoubts.h"

#include <QDate>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace vantroque::ProfileDoubts {

using namespace Qt::StringLiterals;

namespace {

/// Tells of the values of one profile.
class Doubts {
public:
    explicit Doubts(const Tell& tell) : m_tell(tell) {}

    void about(const Profile& profile) const
    {
        aboutItself(profile);
        if (profile.container)
            about(*profile.container);
        if (profile.video)
            about(*profile.video);
        if (profile.frameRate)
            each(u".frameRate.allowed"_s, profile.frameRate->allowed, 1, 1'000);
        if (profile.audio)
            about(*profile.audio);
        if (profile.loudness)
            about(*profile.loudness);
        if (profile.sound)
            about(*profile.sound);
        if (profile.duration)
            about(*profile.duration);
        if (profile.content)
            about(*profile.content);
        if (profile.file)
            bounds(u".file.maxBytes"_s, profile.file->maxBytes, 1, 1e18);
    }

private:
    void aboutItself(const Profile& profile) const
    {
        static const QRegularExpression ordinary(u"^[a-z0-9]+(-[a-z0-9]+)*$"_s);
        if (!ordinary.match(profile.id).hasMatch())
            m_tell(u".id"_s,
                   u"is for the command line: small letters, digits and single hyphens"_s);
        if (profile.name.trimmed().isEmpty())
            m_tell(u".name"_s, u"is empty; it is what the operator reads"_s);
        if (!QDate::fromString(profile.verifiedDate, Qt::ISODate).isValid())
            m_tell(u".verifiedDate"_s, u"is no date such as \"2026-03-01\""_s);
        const bool asks = profile.container || profile.video || profile.frameRate || profile.audio
                          || profile.loudness || profile.duration || profile.content || profile.file
                          || profile.recommendedBitrate;
        if (!asks)
            m_tell({}, u"there is no rule in it: nothing would be checked"_s);
    }
    void about(const ContainerRule& rule) const
    {
        if (rule.allowed.empty())
            m_tell(u".container.allowed"_s, u"is empty: no file would pass"_s);
        small(u".container.allowed"_s, rule.allowed);
    }
    void about(const VideoRule& rule) const
    {
        if (rule.codecs.empty())
            m_tell(u".video.codecs"_s, u"is empty: no picture would pass"_s);
        for (qsizetype i = 0; i < std::ssize(rule.codecs); ++i)
            about(rule.codecs[static_cast<std::size_t>(i)],
                  u".video.codecs"_s + RecordCoding::indexPath(i));
        for (qsizetype i = 0; i < std::ssize(rule.resolutions); ++i) {
            const QString path = u".video.resolutions"_s + RecordCoding::indexPath(i);
            const auto& size = rule.resolutions[static_cast<std::size_t>(i)];
            bounds(path + u".width"_s, std::optional(size.width), 2, 100'000);
            bounds(path + u".height"_s, std::optional(size.height), 2, 100'000);
        }
        const std::vector<QString> known{u"420"_s, u"422"_s, u"444"_s};
        if (rule.chromaPreferred)
            among(u".video.chromaPreferred"_s, *rule.chromaPreferred, known);
        for (const QString& chroma : rule.chromaAccepted.value_or(std::vector<QString>()))
            among(u".video.chromaAccepted"_s, chroma, known);
        if (!rule.flashes)
            return;
        about(rule.flashes->source, u".video.flashes.source"_s);
        if (const auto& light = rule.flashes->luminance)
            among(u".video.flashes.luminance"_s, Text::utf8(enumName(*light)),
                  {u"bt1886"_s, u"legacy"_s});
    }
    void about(const CodecOption& option, const QString& path) const
    {
        small(path + u".codec"_s, {option.codec});
        for (const QString& name : option.proresProfiles.value_or(std::vector<QString>()))
            among(path + u".proresProfiles"_s, name,
                  {u"Proxy"_s, u"LT"_s, u"Standard"_s, u"HQ"_s, u"4444"_s, u"4444 XQ"_s});
        bounds(path + u".minBitrateKbps"_s, option.minBitrateKbps, 1, 1e8);
        bounds(path + u".maxBitrateKbps"_s, option.maxBitrateKbps, 1, 1e8);
        order(path, u"minBitrateKbps"_s, option.minBitrateKbps, u"maxBitrateKbps"_s,
              option.maxBitrateKbps);
    }
    void about(const AudioRule& rule) const
    {
        small(u".audio.codecs"_s, rule.codecs);
        each(u".audio.sampleRates"_s, rule.sampleRates, 1'000, 1'000'000);
        bounds(u".audio.channels"_s, rule.channels, 1, 64);
        bounds(u".audio.maxStreams"_s, rule.maxStreams, 1, 1'000);
    }
    void about(const LoudnessRule& rule) const
    {
        bounds(u".loudness.targetLKFS"_s, rule.targetLKFS, -70, 0);
        bounds(u".loudness.toleranceLU"_s, rule.toleranceLU, 0, 30);
        for (const auto& [name, peak] :
             {std::pair(u"maxTruePeakDb"_s, rule.maxTruePeakDb),
              std::pair(u"recommendedMaxTruePeakDb"_s, rule.recommendedMaxTruePeakDb),
              std::pair(u"minTruePeakDb"_s, rule.minTruePeakDb)})
            bounds(u".loudness."_s + name, peak, -60, 6);
        order(u".loudness"_s, u"minTruePeakDb"_s, rule.minTruePeakDb, u"maxTruePeakDb"_s,
              rule.maxTruePeakDb);
        bounds(u".loudness.maxSilenceSeconds"_s, rule.maxSilenceSeconds, 0, 86'400);
        about(rule.maxShortTerm, u".loudness.maxShortTerm"_s);
        about(rule.maxMomentary, u".loudness.maxMomentary"_s);
    }
    void about(const SoundRule& rule) const
    {
        if (rule.alertTonesForbidden)
            about(*rule.alertTonesForbidden, u".sound.alertTonesForbidden"_s);
        if (rule.clippingForbidden)
            about(*rule.clippingForbidden, u".sound.clippingForbidden"_s);
    }
    void about(const std::optional<LoudnessLimit>& limit, const QString& path) const
    {
        if (!limit)
            return;
        bounds(path + u".lufs"_s, std::optional(limit->lufs), -70, 0);
        about(limit->source, path + u".source"_s);
    }
    void about(const RuleSource& source, const QString& path) const
    {
        static const QRegularExpression date(u"^\\d{4}(-\\d\\d){0,2}$"_s);
        if (source.document.trimmed().isEmpty())
            m_tell(path + u".document"_s, u"is empty; it is what the operator reads"_s);
        if (!date.match(source.date).hasMatch())
            m_tell(path + u".date"_s, u"is none such as \"2016\" or \"2026-03-01\""_s);
    }
    void about(const DurationRule& rule) const
    {
        bounds(u".duration.minSeconds"_s, rule.minSeconds, 0, 86'400);
        bounds(u".duration.maxSeconds"_s, rule.maxSeconds, 0, 86'400);
        order(u".duration"_s, u"minSeconds"_s, rule.minSeconds, u"maxSeconds"_s, rule.maxSeconds);
    }
    void about(const ContentRule& rule) const
    {
        bounds(u".content.slateSeconds"_s, rule.slateSeconds, 0, 600);
        bounds(u".content.slateBlackSeconds"_s, rule.slateBlackSeconds, 0, 600);
        bounds(u".content.textSafeFraction"_s, rule.textSafeFraction, 0, 1);
        bounds(u".content.textRejectFraction"_s, rule.textRejectFraction, 0, 1);
        std::vector<QString> zones;
        std::ranges::transform(PlatformZoneCatalog::all(), std::back_inserter(zones),
                               &PlatformZone::id);
        for (const QString& zone : rule.textClearOfZones.value_or(std::vector<QString>()))
            among(u".content.textClearOfZones"_s, zone, zones);
    }

    template<typename Number>
    void bounds(const QString& path, const std::optional<Number>& number, double least,
                double most) const
    {
        const double value = number ? static_cast<double>(*number) : least;
        if (!(value >= least && value <= most))
            m_tell(path,
                   u"%1 is not from %2 to %3"_s.arg(QString::number(value), QString::number(least),
                                                    QString::number(most)));
    }
    template<typename Number>
    void each(const QString& path, const std::vector<Number>& numbers, double least,
              double most) const
    {
        for (qsizetype i = 0; i < std::ssize(numbers); ++i)
            bounds(path + RecordCoding::indexPath(i),
                   std::optional(numbers[static_cast<std::size_t>(i)]), least, most);
    }
    template<typename Number>
    void order(const QString& path, const QString& lower, const std::optional<Number>& least,
               const QString& upper, const std::optional<Number>& most) const
    {
        if (least && most && *least > *most)
            m_tell(path + u'.' + lower, u"is above %1: nothing would pass"_s.arg(upper));
    }
    /// Names of the field's tools.
    void small(const QString& path, const std::vector<QString>& names) const
    {
        for (const QString& name : names)
            if (name.isEmpty() || name != name.toLower() || name.startsWith(u'.'))
                m_tell(path, u"\"%1\": such names are of small letters, as ffprobe says them"_s.arg(
                                 Text::printable(name)));
    }
    void among(const QString& path, const QString& name, const std::vector<QString>& known) const
    {
        if (std::ranges::find(known, name) == known.end())
            m_tell(path, u"\"%1\" is none of %2"_s.arg(Text::printable(name),
                                                       Text::joined(known, u", "_s)));
    }

    const Tell& m_tell;
};

} // namespace

void tellDoubtfulValues(const Profile& profile, const Tell& tell)
{
    Doubts(tell).about(profile);
}

} // namespace vantroque::ProfileDoubts
