#include "tests/gui/sheet/SheetFixture.h"

#include "foundation/data/TypeDatabase.h"
#include "foundation/data/UniqueIdGenerator.h"
#include "gui/sheet/ListItem.h"
#include "gui/widgets/GuiSkin.h"

#include <gtest/gtest.h>
#include <wx/sizer.h>

#include <QGuiApplication>
#include <cmath>

namespace tavrin::tests {

using Data = colorkit::ColorMappingWithObservers::Data;

Optional<sheet::StopHistogram> TestHost::getHistogram(int operatorId) {
    if (operatorId == 0) {
        return std::nullopt;
    }
    sheet::StopHistogram histogram{-8.0f, 6.0f, {}};
    for (int channel = 0; channel < 3; ++channel) {
        for (int bin = 0; bin < 128; ++bin) {
            const float x = static_cast<float>(bin) / 128.0f - 0.45f - 0.08f * channel;
            const float y =
                std::exp(-30.0f * x * x) + 0.3f * std::exp(-200.0f * (x - 0.3f) * (x - 0.3f));
            histogram.counts[channel].push_back(y);
        }
    }
    return histogram;
}

GenericObject ShownSheet::makeOperator(const char* typeName) {
    GenericObject object = GenericObject::construct(typeName);
    object.set("id", UniqueIdGenerator::getInstance().getNext());
    object.set("enabled", true);
    return object;
}

ShownSheet::ShownSheet(const std::vector<const char*>& operators, wxSize size) : frame(size) {
    TypeDatabase::registerCallersTypes();
    model = std::make_shared<colorkit::ColorMappingWithObservers>();
    GenericList list;
    for (const char* name : operators) {
        list.push_back(makeOperator(name));
    }
    setList(std::move(list));
    scrolled = new wxScrolledWindow(&*frame);
    scrolled->SetScrollRate(10, 10);
    scrolled->SetBackgroundColour(widgets::GuiSkin::DEFAULT().base);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    window = new sheet::WrappedQtWidget<sheet::PropertySheet>(
        scrolled, sheet::makeEntityPathModel(model), String("TONE MAPPING"), host);
    sizer->Add(window, 0, wxEXPAND | wxALL, 10);
    scrolled->SetSizer(sizer);
    frame.show();
    EXPECT_TRUE(waitUntilShown(*window->getWidget()));
    waitForLayout();
    window->SetFocus();
    EXPECT_TRUE(waitFor([] { return QGuiApplication::focusWindow() != nullptr; }));
}

ShownSheet::~ShownSheet() {
    window->release();
    TypeDatabase::unregisterCallersTypes();
}

const GenericList& ShownSheet::getList() const {
    return model->getData().get<GenericList>(Data::kToneMapping);
}

void ShownSheet::setList(GenericList list) const {
    model->set(Data::kToneMapping, std::move(list));
}

std::vector<String> ShownSheet::getTypes() const {
    std::vector<String> types;
    for (const GenericObject& object : getList()) {
        types.push_back(object.getType().getName());
    }
    return types;
}

sheet::ListItem& ShownSheet::getItem(std::size_t index) const {
    return *getSheet().getList().getItems().at(index);
}

QWidget& ShownSheet::getPart(std::size_t item) const {
    return getItem(item);
}

void ShownSheet::click(const QWidget& widget) const {
    waitForLayout();
    clickMouse(*window, widget);
}

void ShownSheet::waitForLayout() const {
    QSize last;
    EXPECT_TRUE(waitFor([&] {
        const QSize now = getSheet().size();
        return std::exchange(last, now) == now &&
               getSheet().height() >= getSheet().sizeHint().height();
    }));
}

}  // namespace tavrin::tests
