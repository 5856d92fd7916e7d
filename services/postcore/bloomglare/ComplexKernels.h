#pragma once

#include "services/postcore/bloomglare/Fft.h"

#include <cstddef>

namespace tavrin::postcore {

/// Multiplies each of `rowCount` rows by its factor. Rows lie one after the other, and have
/// multiples of kFftColumns values.
void multiplyRows(const Complex* factors, std::size_t rowCount, std::size_t rowSize,
                  Complex* values);

/// values[i] = values[i] * others[i] * factor, for multiples of kFftColumns values.
void multiplyBy(const Complex* others, float factor, std::size_t count, Complex* values);

}  // namespace tavrin::postcore
