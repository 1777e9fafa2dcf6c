#pragma once

#include <QImage>
#include <QString>

#include <functional>

namespace vantroque::TextQuality {

/// What all clips that are read are like.
constexpr int clipRate = 25;
constexpr int clipFrames = 150;
constexpr QSize clipSize(1280, 720);

/// Codes the pictures, RGB32 of that size, as for delivery.
void writeClip(const QString& path, const std::function<QImage(int)>& frame);

} // namespace vantroque::TextQuality
