#include "Framing/CompareLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

// What holds of every page, over thousands of them.

namespace vantroque {
namespace {

using namespace CompareLayout;

constexpr double hair = 1e-6; // of a point: sums of doubles

struct Case {
    std::vector<Item> items;
    Page page;
};

/// Of any shape, also of shapes that are none, and as many as somebody may select.
Case randomCase(std::mt19937& chance)
{
    const auto between = [&](double least, double most) {
        return std::uniform_real_distribution<double>(least, most)(chance);
    };
    const auto oneOf = [&](int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(chance);
    };
    constexpr std::array usual{16.0 / 9, 9.0 / 16, 1.0, 0.8, 2.39, 4.0 / 3};
    Case made{.page = {.width = between(1, 4000),
                       .height = between(1, 2200),
                       .spacing = between(0, 40),
                       .label = between(0, 120)}};
    const int count = 1 + oneOf(30);
    int group = 0;
    for (int i = 0; i < count; ++i) {
        group += oneOf(4) == 0 ? 1 : 0;
        const double aspect = oneOf(5) == 0
                                  ? between(-0.1, 40)
                                  : usual.at(static_cast<std::size_t>(oneOf(usual.size())));
        made.items.push_back({.group = group, .aspect = aspect});
    }
    return made;
}

bool meet(const Placement& a, const Placement& b, double label)
{
    return a.x + a.width > b.x + hair && b.x + b.width > a.x + hair
           && a.y + a.height + label > b.y + hair && b.y + b.height + label > a.y + hair;
}

/// Tiles of a row have their bottom edge in common.
bool inOneRow(const Placement& a, const Placement& b)
{
    return std::abs(a.y + a.height - b.y - b.height) < hair;
}

void expectSound(const Case& one, const Placements& placed)
{
    const auto& tiles = placed.placements;
    ASSERT_EQ(tiles.size(), one.items.size());
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        ASSERT_GT(tiles[i].width, 0);
        ASSERT_GT(tiles[i].height, 0);
        ASSERT_LE(tiles[i].width, one.page.width);
        ASSERT_GE(tiles[i].x, 0);
        ASSERT_GE(tiles[i].y, -hair);
        ASSERT_LE(tiles[i].x + tiles[i].width, one.page.width + 0.5 + hair);
        ASSERT_LE(tiles[i].y + tiles[i].height + one.page.label, placed.height + hair);
        for (std::size_t k = i + 1; k < tiles.size(); ++k) {
            ASSERT_FALSE(meet(tiles[i], tiles[k], one.page.label)) << i << " and " << k;
            if (inOneRow(tiles[i], tiles[k])) {
                ASSERT_EQ(one.items[i].group, one.items[k].group);
                ASSERT_LT(tiles[i].x, tiles[k].x);
            } else {
                ASSERT_LT(tiles[i].y + tiles[i].height, tiles[k].y + tiles[k].height);
            }
        }
    }
}

} // namespace

TEST(CompareLayoutCases, NothingOverlapsFamiliesKeepApartAndTheOrderStays)
{
    std::mt19937 chance(15);
    for (int i = 0; i < 5000; ++i) {
        SCOPED_TRACE(i);
        const Case one = randomCase(chance);
        const double tileHeight = std::uniform_real_distribution<double>(20, 2200)(chance);
        expectSound(one, place(one.items, tileHeight, one.page));
        if (HasFatalFailure())
            return;
    }
}

TEST(CompareLayoutCases, WhatFitsReallyFitsAndNothingMuchLargerWould)
{
    std::mt19937 chance(15);
    int scrolled = 0;
    int filled = 0;
    for (int i = 0; i < 5000; ++i) {
        SCOPED_TRACE(i);
        const Case one = randomCase(chance);
        const TileHeights heights = tileHeights(one.items, one.page);
        const auto heightAt = [&](double tile) { return place(one.items, tile, one.page).height; };
        const double room = one.page.height + 0.5;
        ASSERT_GE(heights.fit, lowestTile);
        ASSERT_LE(heights.fit, heights.largest);
        if (heightAt(lowestTile) > room) {
            ASSERT_EQ(heights.fit, lowestTile);
            ++scrolled;
        } else {
            ASSERT_LE(heightAt(heights.fit), room);
            if (heights.canEnlarge()) {
                ASSERT_GT(heightAt(std::min(heights.fit + 1.001, heights.largest)), room);
                ++filled;
            }
        }
        expectSound(one, place(one.items, heights.fit, one.page));
        if (HasFatalFailure())
            return;
    }
    EXPECT_GT(scrolled, 500); // both kinds were met
    EXPECT_GT(filled, 500);
}

} // namespace vantroque
