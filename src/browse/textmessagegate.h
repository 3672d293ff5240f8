#pragma once

namespace tomewise {

// The alert of a screen whose device cannot send text messages.
inline constexpr auto kCantSendTextTitle = "Can't Send Text Message";
inline constexpr auto kCantSendTextMessage = "Your device is not able to send text messages.";

} // namespace tomewise
