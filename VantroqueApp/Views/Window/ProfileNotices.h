#pragma once

#include <functional>

namespace vantroque {

class NoticeBars;
class ProfileChoice;

/// Tells on a bar, as long as it is so, that the operator's own profiles are not all in use.
namespace ProfileNotices {

/// `show` leads to where more is said of them. All must outlive the window.
void tell(const ProfileChoice& choice, NoticeBars& bars, const std::function<void()>& show);

} // namespace ProfileNotices
} // namespace vantroque
