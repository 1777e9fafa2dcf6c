#include "Base/CompactJson.h"

#include "Base/Json.h"
#include "Support/TestFolder.h"

#include <QJsonDocument>

namespace vantroque {

enum class Shade { light, veryDark };
VANTROQUE_ENUM_NAMES(Shade, light, veryDark)

namespace {

using namespace Qt::StringLiterals;

struct Inner {
    std::optional<double> zed;
    std::optional<QString> alpha;

    VANTROQUE_RECORD(Inner, zed, alpha)
};

/// One member of each kind, in no order.
struct Sample {
    bool yes = true;
    std::int64_t large = 9007199254740993;
    std::pair<double, double> bounds{0.5, -2};
    std::vector<double> numbers{0.1, 1e300, 5e-324, 100000, -99, 23.976023976023978};
    std::vector<float> singles{0.1F, 3.4028235e38F, 16777216.0F};
    QString text = u"\u00E9 \U0001F3AC \"q\" \\ / \n\t\x01\x7F <&>"_s;
    std::map<QString, std::vector<int>> series{{u"b\""_s, {1, 2}}, {u""_s, {}}};
    Shade shade = Shade::veryDark;
    FileUrl file = FileUrl::fromPath("/v/a b\xFF.mov");
    QDateTime date{{2026, 3, 1}, {12, 30}, Qt::UTC};
    QUuid id{0x12345678, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0xAB};
    std::optional<int> absent;
    std::shared_ptr<const Inner> shared = std::make_shared<const Inner>(Inner{1.5, {}});
    std::shared_ptr<const Inner> null;
    std::vector<Inner> inner{{}, {2.5, u"a"_s}, {{}, u"b"_s}};

    VANTROQUE_RECORD(Sample, yes, large, bounds, numbers, singles, text, series, shade, file, date,
                     id, absent, shared, null, inner)
};

template<typename T>
std::string printed(const T& record)
{
    return CompactJson::print(record).value_or("failed");
}

template<typename T>
QString problem(const T& record)
{
    const auto text = CompactJson::print(record);
    return text ? u"none"_s : Error(text.error()).description;
}

struct Mapped {
    std::map<QString, double> values;
    VANTROQUE_RECORD(Mapped, values)
};

TEST(CompactJson, HasNoBlanksAndItsKeysInOrder)
{
    EXPECT_EQ(printed(Inner{1.5, u"x y"_s}), R"({"alpha":"x y","zed":1.5})");
    EXPECT_EQ(printed(Inner{1.5, {}}), R"({"zed":1.5})");
    EXPECT_EQ(printed(Inner{}), "{}");
}

TEST(CompactJson, SaysWhatTheTreeOfValuesSays)
{
    const auto tree = RecordCoding::encode(Sample());
    ASSERT_TRUE(tree);
    const auto text = QByteArray::fromStdString(printed(Sample()));
    EXPECT_EQ(QJsonDocument::fromJson(text), QJsonDocument(tree->toObject())) << text.toStdString();
}

TEST(CompactJson, ReadsBackAsTheSameRecord)
{
    auto back = Json::read<Sample>(QByteArray::fromStdString(printed(Sample())));
    ASSERT_TRUE(back);
    EXPECT_EQ(*back->shared, *Sample().shared);
    back->shared = nullptr;
    Sample sample;
    sample.shared = nullptr;
    EXPECT_EQ(*back, sample);
}

TEST(CompactJson, WhatHasNoJsonFormFailsWithItsPath)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Sample sample;
    sample.inner[1].zed = infinity;
    EXPECT_EQ(problem(sample), u".inner[1].zed: not a finite number"_s);
    sample = {};
    sample.singles[2] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(problem(sample), u".singles[2]: not a finite number"_s);
    sample = {};
    sample.shared = std::make_shared<const Inner>(Inner{-infinity, {}});
    EXPECT_EQ(problem(sample), u".shared.zed: not a finite number"_s);
    sample = {};
    sample.date = QDateTime();
    EXPECT_EQ(problem(sample), u".date: not a date"_s);
    EXPECT_EQ(problem(Mapped{{{u"y"_s, infinity}}}), u".values.y: not a finite number"_s);
}

} // namespace
} // namespace vantroque
