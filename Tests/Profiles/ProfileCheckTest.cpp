#include "Profiles/ProfileCheck.h"

#include "Base/Files.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Problem = ProfileCheck::Problem;

/// A profile of eight lines, of which `more` are the last.
QByteArray profile(const QByteArray& more)
{
    return "{\n\"id\": \"mine\",\n\"name\": \"Mine\",\n\"group\": \"digital\",\n"
           "\"sourceURL\": \"https://example.org\",\n\"verifiedDate\": \"2026-03-01\",\n"
           + more + "\n}\n";
}

std::vector<std::string> told(const QByteArray& text)
{
    std::vector<std::string> lines;
    for (const Problem& problem : ProfileCheck::problems(text))
        lines.push_back(std::to_string(problem.line)
                        + (problem.kind == Problem::Kind::error ? " error " : " ")
                        + problem.path.toStdString() + ": " + problem.problem.toStdString());
    return lines;
}

TEST(ProfileCheck, WhatShipsHasNoProblems)
{
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(VANTROQUE_SHIPPED_PROFILES)) {
        const auto text = Files::read(file.path(), 1'000'000);
        ASSERT_TRUE(text);
        EXPECT_THAT(told(*text), IsEmpty()) << file.path();
        ++count;
    }
    EXPECT_GT(count, 40);
}

TEST(ProfileCheck, TellsTheLineOfAMistakeInTheJson)
{
    EXPECT_THAT(told("{\n\"id\": \"mine\",\n\"name\" \"Mine\"\n}"),
                ElementsAre(HasSubstr("3 error : not valid JSON at byte")));
    EXPECT_THAT(told(""), ElementsAre(HasSubstr("1 error : not valid JSON")));
}

TEST(ProfileCheck, TellsTheLineAndTheFieldOfAWrongValue)
{
    EXPECT_THAT(
        told(profile("\"video\": {\n\"codecs\": [\n{\"codec\": \"h264\"},\n{\"codec\": 7}\n]}")),
        ElementsAre(HasSubstr("10 error .video.codecs[1].codec: ")));
    EXPECT_THAT(told(profile("\"file\": {\n\"namePattern\": \"[a\"}")),
                ElementsAre(HasSubstr("8 error .file.namePattern: no regular expression: ")));
    EXPECT_THAT(told("{\"id\": \"mine\"}"), ElementsAre(HasSubstr("1 error .name: ")));
}

TEST(ProfileCheck, TellsOfFieldsThatAreIgnored)
{
    EXPECT_THAT(
        told(profile("\"duration\": {\n\"maxSecond\": 30},\n\"codecs\": [],\n\"colour\": \"red\"")),
        ElementsAre("8 .duration.maxSecond: no such field; \"maxSeconds\" is meant?",
                    "9 .codecs: no such field here, only elsewhere in a profile",
                    "10 .colour: no such field; it is ignored"));
    EXPECT_THAT(told(profile("\"duration\": {\"maxSeconds\": 30, \"minSeconds\": null}")),
                IsEmpty());
}

TEST(ProfileCheck, TellsOfAFieldThatStandsTwice)
{
    EXPECT_THAT(told(profile("\"duration\": {\"maxSeconds\": 30},\n\"name\": \"Ours\"")),
                ElementsAre("3 .name: stands twice; only the last one counts"));
}

TEST(ProfileCheck, TellsOfValuesThatNoFileMeets)
{
    EXPECT_THAT(told(profile("\"duration\": {\"minSeconds\": 30,\n\"maxSeconds\": 15},\n"
                             "\"loudness\": {\"targetLKFS\": 24}")),
                ElementsAre("7 .duration.minSeconds: is above maxSeconds: nothing would pass",
                            "9 .loudness.targetLKFS: 24 is not from -70 to 0"));
    EXPECT_THAT(told(profile("\"container\": {\"allowed\": [\".MP4\"]},\n"
                             "\"content\": {\"textClearOfZones\": [\"tik-tok\"]}")),
                ElementsAre(HasSubstr("7 .container.allowed: \".MP4\": such names are of small"),
                            "8 .content.textClearOfZones: \"tik-tok\" is none of tiktok, "
                            "meta-reels-stories"));
}

TEST(ProfileCheck, TellsOfAProfileThatChecksNothing)
{
    EXPECT_THAT(told(profile("\"inferred\": true")),
                ElementsAre("1 : there is no rule in it: nothing would be checked"));
    EXPECT_THAT(told("{\"id\": \"A b\", \"name\": \" \", \"group\": \"digital\", \"sourceURL\": "
                     "\"\",\n\"verifiedDate\": \"soon\", \"file\": {\"maxBytes\": 1}}"),
                ElementsAre(HasSubstr("1 .id: "), HasSubstr("1 .name: is empty"),
                            HasSubstr("2 .verifiedDate: is no date")));
}

} // namespace
} // namespace vantroque
