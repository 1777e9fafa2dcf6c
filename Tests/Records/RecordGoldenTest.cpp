#include "Base/Json.h"
#include "Records/CaptionCue.h"
#include "Records/FileReview.h"
#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Records/Report.h"

#include "Support/TestFolder.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QStringList>

#include <functional>
#include <ostream>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// One record with all its fields set, as it is stored, and the fields that it cannot do without.
struct Golden {
    const char* record;
    const char* json;
    const char* required; ///< Names between blanks.
    std::size_t fieldCount;
    std::function<Coded<QJsonValue>(const QJsonValue&)> readAndWrite;

    QJsonObject object() const { return QJsonDocument::fromJson(json).object(); }
    QStringList requiredNames() const
    {
        return QString::fromLatin1(required).split(u' ', Qt::SkipEmptyParts);
    }
};

void PrintTo(const Golden& golden, std::ostream* out)
{
    *out << golden.record;
}

std::string printed(const QJsonObject& object)
{
    return Json::print(object).toStdString();
}

template<typename T>
Golden golden(const char* record, const char* required, const char* json)
{
    const auto readAndWrite = [](const QJsonValue& stored) -> Coded<QJsonValue> {
        const T value = TRY(RecordCoding::decode<T>(stored));
        return RecordCoding::encode(value);
    };
    return {record, json, required, std::tuple_size_v<decltype(T::members())>, readAndWrite};
}

const std::vector<Golden> goldens{
    golden<TimeSpan>("TimeSpan", "start end", R"({"start": 1.5, "end": 2.25})"),
    golden<NormalizedRect>("NormalizedRect", "x y width height",
                           R"({"x": 0.1, "y": 0.2, "width": 0.3, "height": 0.4})"),
    golden<CropRect>("CropRect", "width height x y",
                     R"({"width": 1920, "height": 800, "x": 0, "y": 140})"),
    golden<TextRegion>("TextRegion", "start end x y width height text",
                       R"({"start": 1, "end": 3.5, "x": 0.1, "y": 0.2, "width": 0.3, "height": 0.05,
                           "text": "Now in stores"})"),
    golden<CaptionCue::Run>(
        "CaptionRun", "text italic bold underline",
        R"({"text": "Now\non sale", "italic": true, "bold": false, "underline": true})"),
    golden<CaptionCue>("CaptionCue", "id start end runs placement",
                       R"({"id": 3, "start": 1.04, "end": 2.5, "placement": "top", "runs": [
                           {"text": "Now", "italic": false, "bold": true, "underline": false}]})"),
    golden<LevelRun>("LevelRun", "start end worstFraction",
                     R"({"start": 1, "end": 5.5, "worstFraction": 0.125})"),
    golden<PictureLevels>(
        "PictureLevels",
        "yMinPercent yMaxPercent sampleRate sampleWidth sampleHeight matrix matrixAssumed "
        "fullRange yRejectRuns rgbRejectRuns strictRuns areaFraction",
        R"({"yMinPercent": -1.5, "yMaxPercent": 104, "sampleRate": 4, "sampleWidth": 320,
            "sampleHeight": 180, "matrix": "bt2020", "matrixAssumed": true, "fullRange": false,
            "yRejectRuns": [{"start": 1, "end": 5.5, "worstFraction": 0.125}],
            "rgbRejectRuns": [], "strictRuns": [{"start": 0, "end": 1, "worstFraction": 0.02}],
            "areaFraction": 0.01})"),
    golden<FlashFrame>("FlashFrame", "frame ratio", R"({"frame": 120, "ratio": 8.5})"),
    golden<FrameCadence>(
        "FrameCadence",
        "duplicateFrames duplicateCount repeatedFieldsTop repeatedFieldsBottom "
        "repeatedFieldsNeither flashFrames interiorBlackRuns frameCountSeen",
        R"({"duplicateFrames": [5, 10], "duplicateCount": 300, "duplicatePeriod": 5,
            "duplicateCause": "conversion", "duplicateSpan": [5, 745], "repeatedFieldsTop": 1,
            "repeatedFieldsBottom": 2, "repeatedFieldsNeither": 747,
            "flashFrames": [{"frame": 120, "ratio": 8.5}],
            "interiorBlackRuns": [{"start": 3, "end": 3.5}], "frameCountSeen": 750,
            "framesPerPicture": 2.5})"),
    golden<ChannelLevel>("ChannelLevel", "", R"({"rmsDb": -23.4, "peakDb": -99, "bitsInUse": 16})"),
    golden<ChannelLevelSeries>("ChannelLevelSeries", "sampleHz rms peak",
                               R"({"sampleHz": 10, "rms": [[-23.4, -99], [-20.1, -18]],
                                   "peak": [[-3.1, -99], [0, 0.3]]})"),
    golden<StereoPhase>("StereoPhase",
                        "series sampleHz meanCorrelation minWindowCorrelation outOfPhaseRuns "
                        "dualMono audibleSeconds",
                        R"({"series": [0.98, -0.31], "sampleHz": 10, "meanCorrelation": 0.335,
                            "minWindowCorrelation": -0.31,
                            "outOfPhaseRuns": [{"start": 3, "end": 3.5}], "dualMono": false,
                            "audibleSeconds": 28.5})"),
    golden<DamagedPlace>("DamagedPlace", "start end picture sound",
                         R"({"start": 1.5, "end": 2.25, "picture": true, "sound": false})"),
    golden<DecodeHealth>("DecodeHealth", "places placeCount",
                         R"({"framesDecoded": 121, "framesPromised": 250, "soundSeconds": 4.8,
                             "soundSecondsPromised": 10, "places": [{"start": 1.5, "end": 2.25,
                             "picture": true, "sound": true}], "placeCount": 4,
                             "endsAt": 4.8})"),
    golden<DetailSegment>("DetailSegment", "start end halfResPsnrDb",
                          R"({"start": 0, "end": 2.5, "halfResPsnrDb": 41.2,
                              "quarterResPsnrDb": 35.1})"),
    golden<DetailEstimate>("DetailEstimate", "samplesMeasured segments",
                           R"({"halfResPsnrDb": 41.2, "quarterResPsnrDb": 35.1,
                               "samplesMeasured": 60, "lumaBitsInUse": 8,
                               "segments": [{"start": 0, "end": 2.5, "halfResPsnrDb": 41.2}]})"),
    golden<EmbeddedCaptionSource>("EmbeddedCaptionSource", "kind",
                                  R"({"kind": "cea608", "streamIndex": 3, "codec": "mov_text",
                                      "language": "eng"})"),
    golden<HRDInfo>("HRDInfo", "present",
                    R"({"present": true, "cbrFlag": false, "declaredBitrateKbps": 15000.5})"),
    golden<HDRMetadata>("HDRMetadata", "",
                        R"({"maxCLL": 1000, "maxFALL": 400, "masteringDisplay": "P3-D65",
                            "masteringPeakNits": 1000.5})"),
    golden<VideoStreamInfo>(
        "VideoStreamInfo",
        "codec rawCodecName width height pixFmt nominalFrameRate durationSeconds isVFR "
        "bitratePerSecondKbps",
        R"({"codec": "hevc", "rawCodecName": "hevc", "proresProfile": "Main 10",
            "encoderProfile": "Main 10", "level": 120, "width": 1920, "height": 1080,
            "pixFmt": "yuv420p10le", "chroma": "420", "sampleAspect": "1:1",
            "fieldOrder": "progressive", "nominalFrameRate": 23.976, "frameCount": 9000000000,
            "durationSeconds": 30.03, "bitrateKbps": 15000.25, "isVFR": true,
            "vfrDetail": "gaps", "hrd": {"present": false},
            "bitratePerSecondKbps": [15000.5, 14999], "colorTransfer": "smpte2084",
            "closedCaptions": true, "colorRange": "tv", "colorSpace": "bt2020nc",
            "colorPrimaries": "bt2020", "bitDepth": 10, "hdr": {"maxCLL": 1000},
            "position": 1, "rotation": -90})"),
    golden<AudioStreamInfo>("AudioStreamInfo", "codec rawCodecName sampleRate channels streamCount",
                            R"({"codec": "pcm", "rawCodecName": "pcm_s24le", "sampleRate": 48000,
                                "channels": 6, "bitDepth": 24, "bitrateKbps": 6912.5,
                                "streamCount": 2, "durationSeconds": 30.03,
                                "channelLayout": "5.1", "tracks": []})"),
    golden<AudioTrackInfo>("AudioTrackInfo", "codec sampleRate channels",
                           R"({"codec": "pcm_s24le", "sampleRate": 48000, "channels": 6,
                               "channelLayout": "5.1", "durationSeconds": 30.03})"),
    golden<TrackLoudness>("TrackLoudness", "first count",
                          R"({"first": 2, "count": 2, "integratedLKFS": -23.1,
                              "truePeakDb": -2.5})"),
    golden<LostChannel>("LostChannel", "channel start", R"({"channel": 1, "start": 2.48})"),
    golden<AlertTone>("AlertTone", "kind channel start end",
                      R"({"kind": "attention", "channel": 1, "start": 2.1, "end": 4.05})"),
    golden<ClippedRun>("ClippedRun", "channel start samples",
                       R"({"channel": 0, "start": 12.5, "samples": 7})"),
    golden<SoundScan>("SoundScan", "alertTones clippedRuns clippedRunCount",
                      R"({"alertTones": [{"kind": "header", "channel": 0, "start": 1, "end": 1.1}],
                          "clippedRuns": [{"channel": 0, "start": 12.5, "samples": 7}],
                          "clippedRunCount": 1})"),
    golden<LoudestWindow>("LoudestWindow", "lufs start", R"({"lufs": -18.4, "start": 11.2})"),
    golden<FlashFinding>("FlashFinding", "kind start end worst box area changes flashes",
                         R"({"kind": "luminance", "start": 1.12, "end": 2.04, "worst": 1.4,
                             "box": {"x": 0.5, "y": 0, "width": 0.5, "height": 1}, "area": 0.5,
                             "step": 61.5, "changes": 9, "flashes": 4, "moves": true})"),
    golden<FlashCurve>("FlashCurve", "sampleHz risk", R"({"sampleHz": 10, "risk": [0, 0.43, 1]})"),
    golden<FlashInfo>("FlashInfo", "light peak apartSeconds fields findings curve",
                      R"({"light": "legacy", "peak": 200, "apartSeconds": 0.36, "fields": true,
                          "findings": [], "leftOut": 3,
                          "curve": {"sampleHz": 10, "risk": [0.5]}})"),
    golden<SubtitleStreamInfo>("SubtitleStreamInfo", "index codec",
                               R"({"index": 2, "codec": "subrip", "language": "eng"})"),
    golden<SignalInfo>("SignalInfo", "headBlackSeconds tailBlackSeconds headFreezeSeconds",
                       R"({"integratedLKFS": -23.1, "truePeakDb": -2.5, "loudnessRangeLU": 6.5,
            "soundScan": {"alertTones": [], "clippedRuns": [], "clippedRunCount": 0}, "soundScanAttempted": true,
            "maxShortTerm": {"lufs": -18.4, "start": 11.2}, "maxMomentary": {"lufs": -15.1, "start": 12.3},
            "loudestSeconds": 12.35, "truePeakSeconds": 4.1, "pictureStart": 0.48, "pictureEnd": 30.04, "soundStart": 0.25, "soundEnd": 30,
            "longestSilenceSeconds": 1.5, "headBlackSeconds": 0.5,
            "tailBlackSeconds": 0.25, "headFreezeSeconds": 5, "activePicture": {"width": 1920,
            "height": 800, "x": 0, "y": 140}, "interlacedRatio": 0.01, "blackRuns": [{"start": 5, "end": 7}],
            "freezeRuns": [{"start": 9, "end": 10.5}], "audioIslands": [], "leaderToneHz": 1000, "leaderPopPeakDb": -20.5,
            "leaderToneChecked": true, "headSilenceSeconds": 7, "slateTextLines": ["TITLE"],
            "textRegions": [], "textScanAttempted": true, "levels": {"yMinPercent": 0,
            "yMaxPercent": 100, "sampleRate": 4, "sampleWidth": 320, "sampleHeight": 180,
            "matrix": "bt709", "matrixAssumed": false, "fullRange": true, "yRejectRuns": [],
            "rgbRejectRuns": [], "strictRuns": [], "areaFraction": 0.01},
            "cadence": {"duplicateFrames": [], "duplicateCount": 0, "repeatedFieldsTop": 0,
            "repeatedFieldsBottom": 0, "repeatedFieldsNeither": 750, "flashFrames": [],
            "interiorBlackRuns": [], "frameCountSeen": 750},
            "phase": {"series": [], "sampleHz": 10, "meanCorrelation": 1,
            "minWindowCorrelation": 1, "outOfPhaseRuns": [], "dualMono": true,
            "audibleSeconds": 30}, "channelLevels": [{}, {"rmsDb": -20}],
            "channelSeries": {"sampleHz": 10, "rms": [], "peak": []}, "lostChannels": [],
            "audioTracks": [{"first": 1, "count": 1}],
            "detail": {"samplesMeasured": 0, "segments": []},
            "decodeHealth": {"framesDecoded": 750, "framesPromised": 750, "places": [],
            "placeCount": 0}, "flashes": []})"),
    golden<MediaInfo>(
        "MediaInfo", "url fileSizeBytes formatName containerKind durationSeconds",
        R"({"url": "file:///spots/Caf%C3%A9%20100%25.mov", "fileSizeBytes": 9007199254740993,
            "formatName": "mov,mp4,m4a", "containerKind": "mov", "durationSeconds": 30.03,
            "video": {"codec": "h264", "rawCodecName": "h264", "width": 1920, "height": 1080,
            "pixFmt": "yuv420p", "nominalFrameRate": 25, "durationSeconds": 30, "isVFR": false,
            "bitratePerSecondKbps": []},
            "audio": {"codec": "aac", "rawCodecName": "aac", "sampleRate": 48000, "channels": 2,
            "streamCount": 1},
            "signal": {"headBlackSeconds": 0, "tailBlackSeconds": 0, "headFreezeSeconds": 0},
            "moovBeforeMdat": true, "subtitleStreams": [{"index": 2, "codec": "subrip"}],
            "analysisVersion": 5, "startTimecode": "01:00:00:00", "missingBytes": 4096})"),
    golden<ContainerRule>("ContainerRule", "allowed",
                          R"({"allowed": ["mp4", "mov"], "preferred": "mp4",
                              "lowercaseExtensionRequired": true, "fastStartRecommended": false})"),
    golden<CodecOption>("CodecOption", "codec",
                        R"({"codec": "h264", "encoderProfiles": ["High"],
                            "encoderProfileNote": "High or better", "proresProfiles": ["HQ"],
                            "minBitrateKbps": 10000, "maxBitrateKbps": 30000,
                            "cbrRequired": true, "preferred": false})"),
    golden<ResolutionOption>("ResolutionOption", "width height",
                             R"({"width": 1920, "height": 1080, "preferred": true})"),
    golden<LevelsRule>("LevelsRule", "standard tolerancePercent areaPercent rejectSeconds",
                       R"({"standard": "EBU R 103", "tolerancePercent": 5, "areaPercent": 1,
                           "rejectSeconds": 4.5})"),
    golden<VideoRule>("VideoRule", "codecs resolutions",
                      R"({"codecs": [{"codec": "h264"}],
                          "resolutions": [{"width": 1920, "height": 1080}],
                          "squarePixelsRequired": true, "progressiveRequired": false,
                          "interlacedAllowedRates": [25, 29.97], "chromaPreferred": "422",
                          "chromaAccepted": ["420"], "levels": {"standard": "EBU R 103",
                          "tolerancePercent": 5, "areaPercent": 1, "rejectSeconds": 4},
                          "flashes": {"source": {"document": "BCAP Code", "date": "2015",
                          "certainty": "owner"}}})"),
    golden<FrameRateRule>("FrameRateRule", "allowed",
                          R"({"allowed": [23.98, 25], "preferred": [25], "constantRequired": true,
                              "duplicateFramesForbidden": false, "telecineForbidden": true})"),
    golden<AudioRule>("AudioRule", "codecs sampleRates",
                      R"({"codecs": ["aac", "pcm"], "preferredCodec": "pcm",
                          "minBitrateKbps": 128, "sampleRates": [48000], "bitDepths": [16, 24],
                          "channels": 2, "channelOptions": [2, 8], "maxStreams": 1})"),
    golden<SoundRule>("SoundRule", "",
                      R"({"alertTonesForbidden": {"document": "47 CFR", "clause": "11.45",
                          "date": "2026", "certainty": "owner"},
                          "clippingForbidden": {"document": "House rules", "date": "2025",
                          "certainty": "secondHand"}})"),
    golden<LoudnessRule>("LoudnessRule", "",
                         R"({"targetLKFS": -23, "toleranceLU": 0.5, "peakSource": "EBU R 128",
                             "maxTruePeakDb": -1, "minTruePeakDb": -10, "maxSilenceSeconds": 2.5,
                             "recommendedMaxTruePeakDb": -3, "autoNormalized": true,
                             "maxShortTerm": {"lufs": -18, "source": {"document": "EBU R 128 s1",
                             "date": "2016", "certainty": "owner"}},
                             "maxMomentary": {"lufs": -15.5, "source": {"document": "EBU R 128 s1",
                             "date": "2014", "certainty": "secondHand"}}})"),
    golden<FlashRule>("FlashRule", "source",
                      R"({"source": {"document": "BCAP Code", "clause": "rule 4.6",
                          "date": "2015", "certainty": "owner"}, "luminance": "legacy"})"),
    golden<LoudnessLimit>("LoudnessLimit", "lufs source",
                          R"({"lufs": -18, "source": {"document": "EBU R 128 s1", "date": "2016",
                              "certainty": "owner"}})"),
    golden<RuleSource>("RuleSource", "document date certainty",
                       R"({"document": "ITU-R BT.1702-3", "clause": "Guideline 1",
                           "date": "2023-11", "url": "https://www.itu.int/rec/R-REC-BT.1702",
                           "certainty": "quoted"})"),
    golden<DurationRule>("DurationRule", "",
                         R"({"frameAccurateSeconds": true, "minSeconds": 5, "maxSeconds": 60.5})"),
    golden<ContentRule>(
        "ContentRule", "",
        R"({"slate": "required", "slateLayout": "5 s slate, 2 s black", "slateSeconds": 5,
            "slateBlackSeconds": 2, "slateMuteRequired": true, "slateTwoPopAllowed": false,
            "slateTwoPopMaxDbFS": -20, "slateMustShow": ["duration"], "maxTailFadeFrames": 12,
            "letterboxForbidden": true, "headTailBlackForbidden": false, "textSafeFraction": 0.9,
            "textRejectFraction": 0.95, "textClearOfZones": ["tiktok"]})"),
    golden<FileRule>("FileRule", "",
                     R"({"maxBytes": 9007199254740993, "recommendedMaxBytes": 500000000,
                         "namePattern": "^\\w+$", "nameNote": "letters and digits"})"),
    golden<BitrateLadderStep>("BitrateLadderStep", "name minLines sdrMbps sdrHighMbps",
                              R"({"name": "1080p", "minLines": 1080, "sdrMbps": 8,
                                  "sdrMbpsMax": 10, "sdrHighMbps": 12, "sdrHighMbpsMax": 15,
                                  "hdrMbps": 10.5, "hdrMbpsMax": 12.5, "hdrHighMbps": 15.5,
                                  "hdrHighMbpsMax": 18})"),
    golden<BitrateLadderRule>("BitrateLadderRule", "steps",
                              R"({"steps": [{"name": "1080p", "minLines": 1080, "sdrMbps": 8,
                                  "sdrHighMbps": 12}]})"),
    golden<Profile>(
        "Profile", "id name group sourceURL verifiedDate",
        R"({"id": "test-tv", "name": "Test TV", "shortName": "TTV", "group": "broadcast",
            "sourceURL": "https://example.org", "verifiedDate": "2026-01-31", "inferred": true,
            "notes": "None", "container": {"allowed": ["mov"]},
            "video": {"codecs": [], "resolutions": []}, "frameRate": {"allowed": []},
            "audio": {"codecs": [], "sampleRates": []}, "loudness": {}, "sound": {}, "duration": {},
            "content": {}, "file": {}, "recommendedBitrate": {"steps": []}})"),
    golden<CheckMoment>("CheckMoment", "frame",
                        R"({"frame": 208, "endFrame": 260, "box": {"x": 0.5, "y": 0.1,
                            "width": 0.48, "height": 0.1}})"),
    golden<CheckResult>("CheckResult", "id title verdict measured expected",
                        R"({"id": "frame-rate", "title": "Frame rate", "verdict": "warn",
                            "measured": "25 fps", "expected": "50 fps", "fix": "Re-export.",
                            "moment": {"frame": 208}})"),
    golden<ProfileReport>(
        "ProfileReport",
        "profileID profileName profileShortName inferred sourceURL verifiedDate checks",
        R"({"profileID": "test-tv", "profileName": "Test TV", "profileShortName": "TTV",
            "inferred": false, "sourceURL": "https://example.org", "verifiedDate": "2026-01-31",
            "advisory": true, "checks": [{"id": "a", "title": "A", "verdict": "info",
            "measured": "m", "expected": "e"}], "tag": "measured",
            "passedSummary": "Levels legal"})"),
    golden<Measurements>("Measurements", "",
                         R"({"integratedLKFS": -23.1, "truePeakDb": -2.5, "loudnessRangeLU": 6.5,
                             "phaseMean": 0.98, "phaseMin": -0.31, "phaseInverted": false,
                             "levelsYMinPercent": -1.5, "levelsYMaxPercent": 104,
                             "levelsRejectSeconds": 4.5, "levelsStrictSeconds": 0.25,
                             "levelsGated": true})"),
    golden<SignalEvent>("SignalEvent", "id kind frame verdict text",
                        R"({"id": "safeZone-75-3", "kind": "safeZone", "frame": 75,
                            "endFrame": 100, "verdict": "fail", "text": "Text under controls",
                            "box": {"x": 0.1, "y": 0.2, "width": 0.3, "height": 0.4}})"),
    golden<VideoSummary>("VideoSummary", "width height frameRate durationSeconds",
                         R"({"width": 1920, "height": 1080, "frameRate": 23.976,
                             "durationSeconds": 30.03, "frameCount": 720,
                             "activePicture": {"width": 1920, "height": 800, "x": 0, "y": 140},
                             "embeddedCaptions": [{"kind": "track", "streamIndex": 2}],
                             "fullRange": false, "matrix": "bt601", "pixelAspect": 1.5})"),
    golden<FileReport>(
        "FileReport", "fileName filePath summaryLine profiles",
        R"({"fileName": "spot.mp4", "filePath": "/spots/spot.mp4", "summaryLine": "1.2 MB",
            "measurements": {"phaseMean": 1}, "video": {"width": 1920, "height": 1080,
            "frameRate": 25, "durationSeconds": 30}, "profiles": [{"profileID": "test-tv",
            "profileName": "Test TV", "profileShortName": "TTV", "inferred": false,
            "sourceURL": "", "verifiedDate": "", "checks": []}], "sections": [],
            "events": [{"id": "levels-0-0", "kind": "levels", "frame": 0, "verdict": "warn",
            "text": "Luma"}]})"),
    golden<NormalizedPoint>("NormalizedPoint", "x y", R"({"x": 0.25, "y": 1})"),
    golden<AnnotationStroke>("AnnotationStroke", "id tool points ink",
                             R"({"id": "3F2504E0-4F89-41D3-9A0C-0305E82C3301", "tool": "ellipse",
                                 "points": [{"x": 0.25, "y": 1}], "ink": "amber"})"),
    golden<ReviewComment>("ReviewComment", "id frame frameRate text createdAt strokes",
                          R"({"id": "3F2504E0-4F89-41D3-9A0C-0305E82C3301", "frame": 75,
                              "frameRate": 29.97, "text": "Too loud", "author": "Ada",
                              "createdAt": "2026-03-01T12:30:00Z", "strokes": []})"),
    golden<ReviewSignOff>("ReviewSignOff", "decision decidedAt failingWhenSigned",
                          R"({"decision": "needsRevisions", "decidedAt": "2026-03-01T12:30:00Z",
                              "qcVerdictWhenSigned": "fail", "qcSummaryWhenSigned": "Fails 1 of 2",
                              "failingWhenSigned": ["Test TV"]})"),
    golden<FileReview>(
        "FileReview", "fingerprint fileName lastKnownPath fileSizeBytes comments updatedAt",
        R"({"fingerprint": "00ff", "fileName": "spot.mp4", "lastKnownPath": "/spots/spot.mp4",
            "fileSizeBytes": 9007199254740993, "videoWidth": 1920, "videoHeight": 1080,
            "comments": [{"id": "3F2504E0-4F89-41D3-9A0C-0305E82C3301", "frame": 75,
            "frameRate": 25, "text": "", "createdAt": "2026-03-01T12:30:00Z", "strokes": []}],
            "signOff": {"decision": "approved", "decidedAt": "2026-03-01T12:30:00Z",
            "failingWhenSigned": []}, "updatedAt": "2026-03-01T12:30:00Z",
            "captionsPath": "/spots/spot.srt"})"),
};

class RecordGolden : public testing::TestWithParam<Golden> {
protected:
    QJsonObject withoutField(const QString& name) const
    {
        QJsonObject object = GetParam().object();
        object.remove(name);
        return object;
    }
};

} // namespace

TEST_P(RecordGolden, ReadsAndWritesAllFields)
{
    const QJsonObject stored = GetParam().object();
    ASSERT_EQ(stored.size(), GetParam().fieldCount);
    const auto written = GetParam().readAndWrite(stored);
    ASSERT_TRUE(written.has_value()) << Error(written.error()).description.toStdString();
    EXPECT_EQ(printed(written->toObject()), printed(stored));
}

TEST_P(RecordGolden, IsUnreadableWithoutARequiredField)
{
    for (const QString& name : GetParam().requiredNames()) {
        const auto outcome = GetParam().readAndWrite(withoutField(name));
        ASSERT_FALSE(outcome.has_value()) << name.toStdString();
        EXPECT_EQ(Error(outcome.error()).description, u".%1: missing"_s.arg(name));
    }
}

TEST_P(RecordGolden, IsReadableWithoutAnOptionalFieldAndLeavesItOut)
{
    const QStringList required = GetParam().requiredNames();
    for (const QString& name : GetParam().object().keys()) {
        if (required.contains(name))
            continue;
        QJsonObject expected = withoutField(name);
        QJsonObject withNull = expected;
        withNull.insert(name, QJsonValue::Null);
        for (const QJsonObject& stored : {expected, withNull}) {
            const auto written = GetParam().readAndWrite(stored);
            ASSERT_TRUE(written.has_value()) << Error(written.error()).description.toStdString();
            EXPECT_EQ(printed(written->toObject()), printed(expected));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Records, RecordGolden, testing::ValuesIn(goldens),
                         [](const auto& test) { return std::string(test.param.record); });

TEST(RecordNames, AnEnumerationIsStoredUnderItsCaseNames)
{
    const auto stored = [](auto value) { return RecordCoding::encode(value)->toString(); };
    EXPECT_EQ(stored(ProfileGroup::recommendation), u"recommendation"_s);
    EXPECT_EQ(stored(SlatePolicy::optional), u"optional"_s);
    EXPECT_EQ(stored(DuplicateCause::retimedShot), u"retimedShot"_s);
    EXPECT_EQ(stored(ColorMatrix::bt2020), u"bt2020"_s);
    EXPECT_EQ(stored(SignalEvent::Kind::captionDoubled), u"captionDoubled"_s);
    EXPECT_FALSE(RecordCoding::decode<Verdict>(QJsonValue(u"Pass"_s)).has_value());
}

} // namespace vantroque
