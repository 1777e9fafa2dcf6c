#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Icons.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

/// Relative luminance as WCAG 2.1 has it.
double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
           + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

struct Ground {
    const char* name;
    QColor Theme::*color;
};
using Grounds = std::vector<Ground>;

const Grounds quiet{
    {"window", &Theme::window}, {"sidebar", &Theme::sidebar}, {"card", &Theme::card}};
const Grounds linked{{"window", &Theme::window},
                     {"sidebar", &Theme::sidebar},
                     {"card", &Theme::card},
                     {"hover", &Theme::hover}};
const Grounds every{{"window", &Theme::window},     {"sidebar", &Theme::sidebar},
                    {"card", &Theme::card},         {"hover", &Theme::hover},
                    {"selected", &Theme::selected}, {"pressed", &Theme::pressed},
                    {"badge", &Theme::badge}};

void expectReadable(const Theme& theme, QColor Theme::*ink, const char* name,
                    const Grounds& grounds)
{
    constexpr double least = 4.5; // of usual type
    for (const Ground& ground : grounds)
        EXPECT_GE(contrast(theme.*ink, theme.*ground.color), least)
            << name << " on " << ground.name << (theme.isDark ? ", dark" : ", light");
}

TEST(Theme, TextIsReadableOnEveryGroundThatItStandsOn)
{
    for (const Theme* theme : {&Theme::dark(), &Theme::light()}) {
        expectReadable(*theme, &Theme::text1, "text1", every);
        expectReadable(*theme, &Theme::text2, "text2", every);
        expectReadable(*theme, &Theme::text3, "text3", quiet);
        expectReadable(*theme, &Theme::accent, "accent", linked);
        expectReadable(*theme, &Theme::onAccent, "onAccent", {{"accent", &Theme::accent}});
    }
    // Instruments are dark in either look.
    for (const auto ink : {&Theme::text1, &Theme::text2, &Theme::text3})
        expectReadable(Theme::dark(), ink, "text",
                       {{"readout", &Theme::readout}, {"stage", &Theme::stage}});
}

TEST(Theme, WhatTheStyleSheetWritesIsReadableOnTheFillThatItGives)
{
    const std::map<QString, QColor Theme::*> roles{
        {u"window"_s, &Theme::window},     {u"sidebar"_s, &Theme::sidebar},
        {u"card"_s, &Theme::card},         {u"text1"_s, &Theme::text1},
        {u"text2"_s, &Theme::text2},       {u"text3"_s, &Theme::text3},
        {u"accent"_s, &Theme::accent},     {u"onAccent"_s, &Theme::onAccent},
        {u"selected"_s, &Theme::selected}, {u"hover"_s, &Theme::hover},
        {u"pressed"_s, &Theme::pressed},   {u"badge"_s, &Theme::badge}};
    static const QRegularExpression rule(u"[^{}]*\\{[^{}]*\\}"_s);
    static const QRegularExpression fill(u"[{;]\\s*background: @(\\w+)"_s);
    static const QRegularExpression ink(u"[{;]\\s*color: @(\\w+)"_s);
    QFile file(u":/vantroque/style.qss"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString sheet = QString::fromUtf8(file.readAll());
    int pairs = 0;
    for (auto each = rule.globalMatch(sheet); each.hasNext();) {
        const QString text = each.next().captured().trimmed();
        const auto ground = roles.find(fill.match(text).captured(1));
        const auto color = roles.find(ink.match(text).captured(1));
        if (ground == roles.end() || color == roles.end())
            continue;
        ++pairs;
        for (const Theme* theme : {&Theme::dark(), &Theme::light()})
            EXPECT_GE(contrast(theme->*color->second, theme->*ground->second), 4.5)
                << text.toStdString() << (theme->isDark ? ", dark" : ", light");
    }
    EXPECT_GT(pairs, 10);
}

TEST(Theme, SignsOfVerdictsAreSeenOnTheirGround)
{
    constexpr double least = 3; // of what is no text
    for (const auto sign : {&Theme::pass, &Theme::warn, &Theme::fail}) {
        for (const auto ground :
             {&Theme::window, &Theme::sidebar, &Theme::card, &Theme::selected, &Theme::readout})
            EXPECT_GE(contrast(Theme::dark().*sign, Theme::dark().*ground), least);
        EXPECT_GE(contrast(Theme::light().*sign, Theme::light().chip), least);
    }
}

TEST(Icons, OfButtonsFollowTheLook)
{
    const QIcon icon = Icons::tool(u"copy"_s);
    const auto ink = [&] {
        const QImage image = icon.pixmap(16).toImage();
        QColor most(Qt::transparent);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y).alpha() > most.alpha())
                    most = image.pixelColor(x, y);
        return most.lightness();
    };
    Theme::use(Theme::dark());
    EXPECT_GT(ink(), 200);
    Theme::use(Theme::light());
    EXPECT_LT(ink(), 80);
    Theme::use(Theme::dark());
}

} // namespace
} // namespace vantroque
