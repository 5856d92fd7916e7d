#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/Function.h"
#include "foundation/ObserverList.h"
#include "foundation/Path.h"
#include "services/postcore/ISettings.h"

#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace tavrin::settings {

/// The store of post-processing parameters, by property id, with observers of each. Any thread may
/// call everything. Writes run one after the other, each together with its observers, so that
/// observers see values in the order in which they were written; reads never wait for observers.
///
/// An observer may read, and may write other ids. It must neither write the id that it is told
/// about, nor register for it, nor end its own registration meanwhile. Two stores must not be
/// copied into each other at the same time.
class Settings final : public postcore::ISettings,
                       public std::enable_shared_from_this<postcore::ISettings> {
public:
    using Property = postcore::Property;
    using Observer = ObserverList<int, Property>::Callback;
    using IdFilter = Function<bool(int id)>;

    /// The stored value. Without one, the default of the property's descriptor, which is thereby
    /// stored. Throws an Exception when there is no such property.
    Property get(int id) const override;
    /// Stores any value; when it differs from the stored one, calls the observers of the id before
    /// it returns. What an observer throws reaches the caller after the last observer; the value is
    /// stored then.
    void set(int id, const Property& value) override;
    bool isReadOnly() const override { return false; }

    /// Calls `observer` with the id and the value after each change, on the thread that writes, as
    /// long as the answer lives.
    [[nodiscard]] CallbackLifetime addObserver(int id, Observer observer);

    /// Writes every stored value of `source` whose id the filter accepts, by id, then validates all
    /// values. What has been written stays when that throws.
    void copyFrom(const Settings& source, const IdFilter& filter);

    /// Throws an Exception about the first stored value, by id, that does not fit its descriptor.
    void validateAll() const;

    /// Whether the value fits the descriptor of the id; if not, `failure` (which may be null) gets
    /// one sentence. A NaN lies in every range.
    static bool validateValue(int id, const Property& value, String* failure = nullptr);

    /// Saves the properties with these ids as a settings file. Throws an Exception that names it.
    void save(const Path& path, const std::vector<int>& ids) const;

private:
    // Locked in this order, see docs/architecture.md.
    std::recursive_mutex observerMutex_;
    std::map<int, ObserverList<int, Property>> observers_;  // guarded by observerMutex_
    mutable std::recursive_mutex valueMutex_;
    mutable std::map<int, Property> values_;  // guarded by valueMutex_; grows by reading
};

}  // namespace tavrin::settings
