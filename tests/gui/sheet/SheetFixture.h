#pragma once

#include "foundation/Exception.h"
#include "gui/sheet/ListSection.h"
#include "gui/sheet/PropertySheet.h"
#include "gui/sheet/WrappedQtWidget.h"
#include "services/colorkit/editing/ColorMappingWithObservers.h"
#include "tests/gui/sheet/QtGui.h"

#include <wx/scrolwin.h>

#include <memory>

namespace tavrin::tests {

/// Answers what a test has put in.
class TestHost final : public sheet::IPropertySheetHost {
public:
    Optional<Path> chooseFile(const String&, const Path&, const String&) override { return file; }
    Optional<sheet::StopHistogram> getHistogram(int operatorId) override;
    CallbackLifetime addHistogramObserver(Function<void()>) override { return {}; }
    bool canPickColor() const override { return true; }
    CallbackLifetime pickColor(int,
                               Function<void(const Optional<CompressedRgb>&)> callback) override {
        onPicked = std::move(callback);
        return {};
    }
    void showError(const String& message) override { error = message; }

    Optional<Path> file;
    Function<void(const Optional<CompressedRgb>&)> onPicked;
    String error;
};

/// A sheet over a model with these operators, in a scrolled window of a frame.
class ShownSheet {
public:
    static GenericObject makeOperator(const char* typeName);
    explicit ShownSheet(const std::vector<const char*>& operators, wxSize size = {340, 720});
    ~ShownSheet();

    const GenericList& getList() const;
    void setList(GenericList list) const;
    std::vector<String> getTypes() const;
    template <class T>
    T get(std::size_t item, const char* property) const {
        return getList().at(item).get<T>(property);
    }

    sheet::PropertySheet& getSheet() const { return *window->getWidget(); }
    sheet::ListItem& getItem(std::size_t index) const;
    /// The part of an item of this class and accessible name.
    template <class T>
    T& find(std::size_t item, const QString& name) const {
        for (QWidget* part : getPart(item).template findChildren<QWidget*>()) {
            if (T* found = dynamic_cast<T*>(part); found && part->accessibleName() == name) {
                return *found;
            }
        }
        throw Exception("The item has no such part.");
    }

    void click(const QWidget& widget) const;
    void waitForLayout() const;

    SharedPtr<colorkit::ColorMappingWithObservers> model;
    SharedPtr<TestHost> host = std::make_shared<TestHost>();
    TestFrame frame;
    wxScrolledWindow* scrolled;
    sheet::WrappedQtWidget<sheet::PropertySheet>* window;

private:
    QWidget& getPart(std::size_t item) const;
};

}  // namespace tavrin::tests
