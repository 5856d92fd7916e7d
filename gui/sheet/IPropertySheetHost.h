#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/Color.h"
#include "foundation/Function.h"
#include "foundation/Optional.h"
#include "foundation/Path.h"
#include "foundation/String.h"

#include <array>
#include <vector>

namespace tavrin::sheet {

/// How much of an image has which brightness.
struct StopHistogram {
    float firstStop = 0.0f;  ///< the lower end of the first bin, in stops from middle grey (0.18)
    float lastStop = 0.0f;   ///< the upper end of the last bin
    std::array<std::vector<float>, 3> counts;  ///< of red, green and blue; equally many bins
};

/// What a property sheet needs of the program around it. Main thread.
class IPropertySheetHost {
public:
    virtual ~IPropertySheetHost() = default;

    /// Lets the user choose an existing file; `current` is the one chosen so far or empty, and
    /// `extension`, without a dot, may be empty for all files. Nothing when the user gave up.
    virtual Optional<Path> chooseFile(const String& title, const Path& current,
                                      const String& extension) = 0;

    /// Of what enters the operator with this id; nothing when there is none now.
    virtual Optional<StopHistogram> getHistogram(int operatorId) = 0;
    /// The observer is called when histograms have changed, as long as the answer lives.
    [[nodiscard]] virtual CallbackLifetime addHistogramObserver(Function<void()> observer) = 0;

    /// Whether there is an image to pick colours from.
    virtual bool canPickColor() const = 0;
    /// What enters the operator with this id at the next pixel that the user clicks, in linear
    /// Rec. 709; nothing when the user gave up. Picking ends with that, or with the answer.
    [[nodiscard]] virtual CallbackLifetime pickColor(
        int operatorId, Function<void(const Optional<CompressedRgb>&)> onPicked) = 0;

    /// One sentence on something that did not work.
    virtual void showError(const String& message) = 0;
};

}  // namespace tavrin::sheet
