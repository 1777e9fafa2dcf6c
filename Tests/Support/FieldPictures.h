#pragma once

#include <QByteArray>

#include <filesystem>
#include <string>

/// H.264 in field pictures, as cameras and broadcast encoders write it: the two fields of a frame
/// are a picture each. No encoder that the tests can count on makes them.
namespace vantroque::FieldPictures {

/// A stream of 64x64 with 25 frames a second, of which every third is one frame picture when
/// `isMixed`.
QByteArray h264(int frames, bool isMixed = false);

/// The same in the container of that name, with a packet for each field; made once.
std::filesystem::path clip(const std::string& name, int frames, bool isMixed = false);

} // namespace vantroque::FieldPictures
