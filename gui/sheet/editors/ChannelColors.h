#pragma once

#include <QColor>
#include <array>

namespace tavrin::sheet {

// By which red, green and blue are told apart; equally bright on the skin's dark surfaces.
inline constexpr std::array kChannelColors = {QColor(0xE0, 0x5A, 0x5A), QColor(0x5F, 0xB8, 0x62),
                                              QColor(0x5A, 0x8F, 0xE6)};
inline constexpr std::array kChannelNames = {"Red", "Green", "Blue"};

}  // namespace tavrin::sheet
