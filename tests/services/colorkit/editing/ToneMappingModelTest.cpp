#include "foundation/data/UiAttributes.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/editing/ColorMappingWithObservers.h"
#include "services/colorkit/editing/PipelineData.h"
#include "tests/services/colorkit/MappingFixtures.h"
#include "tests/support/RegisteredTypes.h"

#include <gtest/gtest.h>

#include <vector>

namespace tavrin::colorkit::test {
namespace {

class ToneMappingModel : public testing::Test {
protected:
    ~ToneMappingModel() override { ColorMappingWithObservers::sOverrideSetter = {}; }

    template <class T>
    static const T& getAttribute(const ColorMappingWithObservers& model, const char* property,
                                 const char* key) {
        const TypeDefinition& type = model.getData().getType();
        return *type.getProperties()[type.indexOf(property)].getAttributes().get<T>(key);
    }

    tests::RegisteredTypes types_;
};

TEST_F(ToneMappingModel, StartsOnWithTheDefaultPipeline) {
    const ColorMappingWithObservers model;
    EXPECT_TRUE(model.getData().get<bool>("enabled"));
    EXPECT_EQ(model.getData().get<String>("settingsSource"), "");
    const auto& list = model.getData().get<GenericList>("toneMapping");
    EXPECT_TRUE(arePipelinesSame(createPipeline(list), createDefaultPipeline()));
    const GenericList again =
        getAttribute<UiListDefaultValue>(model, "toneMapping", "Orvix.Ui.ListDefaultValue")();
    EXPECT_TRUE(arePipelinesSame(createPipeline(again), createDefaultPipeline()));
    EXPECT_FALSE(areOperatorsDataSame(again, list)) << "ids are given once";
}

TEST_F(ToneMappingModel, CannotBeEditedUnderATimeOverride) {
    ColorMappingWithObservers model;
    const struct {
        const char* source;
        bool isEditable;
    } cases[] = {{"", true},
                 {"Camera 1", true},
                 {"Camera 1 (Time override)", false},
                 {"(Time override)", true}};
    for (const auto& [source, isEditable] : cases) {
        model.set("settingsSource", String(source));
        for (const char* property : {"enabled", "toneMapping"}) {
            EXPECT_EQ(
                getAttribute<UiPredicate>(model, property, "Orvix.Ui.EnabledIf")(model.getData()),
                isEditable)
                << source;
        }
    }
}

TEST_F(ToneMappingModel, GivesEveryNewObjectToTheOverride) {
    ColorMappingWithObservers::sOverrideSetter = [](GenericObject& object) {
        object.set("enabled", false);
    };
    ColorMappingWithObservers model;
    const auto menu = getAttribute<UiListItemAdder>(model, "toneMapping", "Orvix.Ui.ListItemAdder")
                          .createMenuContent();
    const auto presets = getAttribute<UiListPresets>(model, "toneMapping", "Orvix.Ui.ListPresets")
                             .createMenuContent();
    const auto expectOff = [&] {
        for (const auto& object : model.getData().get<GenericList>("toneMapping")) {
            EXPECT_FALSE(object.get<bool>("enabled"));
        }
    };
    expectOff();
    model.modify<GenericList>("toneMapping", menu.at(1).action);
    expectOff();
    for (const auto& [name, action] : presets) {
        model.modify<GenericList>("toneMapping", action);
        expectOff();
    }
}

/// Keeps the model and the shared colour mapping in step, as a panel does.
class Synchronisation {
public:
    Synchronisation(ColorMappingWithObservers& model, ColorMapping& shared)
        : model_(model), shared_(shared) {
        lifetimes_.push_back(model.addObserver("toneMapping", [this] { storePipeline(); }));
        lifetimes_.push_back(shared.addPipelineObserver([this] { loadPipeline(); }));
        lifetimes_.push_back(model.addObserver(
            "enabled", [this] { shared_.setEnabled(model_.getData().get<bool>("enabled")); }));
        lifetimes_.push_back(
            shared.addEnabledObserver([this] { model_.set("enabled", shared_.isEnabled()); }));
    }

    bool isInStep() const { return areOperatorsDataSame(getList(), convertShared()); }

private:
    const GenericList& getList() const { return model_.getData().get<GenericList>("toneMapping"); }
    GenericList convertShared() const {
        return convertPipelineToDataObjects(shared_.getPipeline(), HiddenItems::Include);
    }
    void storePipeline() {
        if (!isInStep()) {
            shared_.setPipeline(createPipeline(getList()));
        }
    }
    void loadPipeline() {
        if (!isInStep()) {
            model_.set("toneMapping", convertShared());
        }
    }

    ColorMappingWithObservers& model_;
    ColorMapping& shared_;
    std::vector<CallbackLifetime> lifetimes_;
};

TEST_F(ToneMappingModel, StaysInStepWithTheColorMapping) {
    ColorMappingWithObservers model;
    ColorMapping shared;
    const Synchronisation synchronisation(model, shared);
    int changes = 0;
    const auto counter = shared.addPipelineObserver([&] { ++changes; });

    shared.setPipeline(makePipeline({exposure(1.0f), exposure(2.0f)}));
    EXPECT_TRUE(synchronisation.isInStep());
    EXPECT_EQ(changes, 1);
    // The same values with other ids.
    shared.setPipeline(makePipeline({exposure(1.0f), exposure(2.0f)}));
    EXPECT_TRUE(synchronisation.isInStep());
    EXPECT_EQ(changes, 2);

    model.modify<GenericList>("toneMapping", [](GenericList& list) {
        list.erase(list.begin());
        list.front().set("stops", 3.0f);
        list.push_back(GenericObject::construct("Exposure"));  // without an id
    });
    EXPECT_TRUE(synchronisation.isInStep());
    EXPECT_EQ(changes, 3);
    EXPECT_TRUE(
        arePipelinesSame(shared.getPipeline(), makePipeline({exposure(3.0f), exposure(0.0f)})));

    model.set("enabled", false);
    EXPECT_FALSE(shared.isEnabled());
    shared.setEnabled(true);
    EXPECT_TRUE(model.getData().get<bool>("enabled"));
}

}  // namespace
}  // namespace tavrin::colorkit::test
