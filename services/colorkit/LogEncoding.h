#pragma once

#include "services/colorkit/StageList.h"

namespace tavrin::colorkit {

/// Appends a curve that spreads the stops around middle grey over 0 to 1: (log2(x / 0.18) + 10) /
/// 16.5, so that colours from ten stops below to six and a half above fit. Darker ones become 0.
void appendLogEncoding(StageList& stages);

}  // namespace tavrin::colorkit
