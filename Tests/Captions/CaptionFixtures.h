#pragma once

#include <QByteArray>

/// Caption files as editing systems write them.
namespace vantroque::CaptionFixtures {

inline const QByteArray subRip =
    "1\n00:00:00,500 --> 00:00:02,000\n{\\an8}<i>Spring</i> is here\n\n"
    "2\n00:00:02,000 --> 00:00:04,250\n- Coffee?\n- <b>Yes</b> &amp; <u>milk</u>\n\n"
    "3\n00:00:04,500 --> 00:00:06,000\n<font color=\"#ffff00\">In all stores</font>\n";

/// In UTF-8 without a byte order mark, and in Latin-1.
inline const QByteArray accentedUtf8 = "1\n00:00:00,500 --> 00:00:02,000\nUn caf\xC3\xA9 au lait\n";
inline const QByteArray accentedLatin1 = "1\n00:00:00,500 --> 00:00:02,000\nUn caf\xE9 au lait\n";

inline const QByteArray webVtt =
    "WEBVTT - an autumn sale\n\nSTYLE\n::cue { color: white }\n\nNOTE\n00:00 --> 00:01 is no "
    "cue\n\n"
    "intro\n00:00.500 --> 00:02.000 line:0 align:start\n<v Anna>Spring <c.loud>is</c> here\n\n"
    "00:00:02.000 --> 00:00:04.250\n<00:00:02.500>Coffee?\n";

/// "Hello" from 2 to 5 seconds, "World" from 7 seconds; pop-on captions.
inline const QByteArray scenarist =
    "Scenarist_SCC V1.0\n\n"
    "00:00:02:00\t94ae 94ae 9420 9420 9470 9470 c8e5 ecec ef80 942f 942f\n\n"
    "00:00:05:00\t942c 942c\n\n"
    "00:00:07:00\t94ae 94ae 9420 9420 9470 9470 57ef f2ec 6480 942f 942f\n\n"
    "00:00:08:00\t942c 942c\n";

} // namespace vantroque::CaptionFixtures
