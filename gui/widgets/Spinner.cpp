#include "gui/widgets/Spinner.h"

#include "foundation/NumberText.h"
#include "gui/widgets/Conversions.h"
#include "gui/widgets/Expression.h"

#include <wx/brush.h>
#include <wx/spinctrl.h>

#include <algorithm>
#include <cmath>

namespace tavrin::widgets {
namespace {

constexpr int kArrowWidth = 14;
constexpr int kNarrow = 50;  // without arrows
constexpr double kStepsPerRange = 100.0;
constexpr int kRepeatTime = 60;  // milliseconds

}  // namespace

Spinner::Spinner(wxWindow* parent, wxWindowID id, int width, float minimum, float maximum,
                 float defaultValue, int precision, float extra)
    : CustomControl(parent, id), value_(defaultValue), width_(width), editor_(*this) {
    configure(minimum, maximum, defaultValue, precision, extra, false);
    SetName("Spinner");
    SetCursor(wxCursor(wxCURSOR_SIZEWE));
    SetInitialSize();
    bindMouse();
    Bind(wxEVT_KEY_DOWN, &Spinner::onKeyDown, this);
    Bind(wxEVT_CHAR, &Spinner::onCharacter, this);
    Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        endTyping(true);
    });
    repeat_ = [this] {
        repeat_.scheduleDelayed(kRepeatTime);
        stepBy(repeatedStep_);  // last, as what it calls may end the hold, or this object
    };
}

Spinner::~Spinner() = default;

void Spinner::configure(float minimum, float maximum, float defaultValue, int precision,
                        float extra, bool notify) {
    minimum_ = minimum;
    maximum_ = std::max(minimum, maximum);
    default_ = std::clamp(defaultValue, minimum_, maximum_);
    precision_ = precision;
    extra_ = extra > 0.0f ? extra : 1.0f;
    const float before = value_;
    setValue(value_, false);
    if (notify && before != value_ && !std::isnan(before)) {
        emit();
    }
}

void Spinner::setValue(float value, bool notify) {
    value_ = std::isnan(value) ? value : std::clamp(value, minimum_, maximum_);
    Refresh();
    if (notify) {
        emit();
    }
}

void Spinner::setTooltip(const String& text) {
    tooltip_ = std::make_unique<Tooltip>(*this, text);
}

void Spinner::emit() {
    wxSpinDoubleEvent event(wxEVT_SPINCTRLDOUBLE, GetId(), static_cast<double>(value_));
    event.SetEventObject(this);
    ProcessWindowEvent(event);
}

void Spinner::changeTo(double value) {
    const double scale = std::pow(10.0, precision_);
    const double rounded = std::round(value * scale) / scale;
    // A limit need not have few decimals.
    const auto clamped = static_cast<float>(
        std::clamp(rounded, static_cast<double>(minimum_), static_cast<double>(maximum_)));
    if (clamped != value_) {
        setValue(clamped, true);
    }
}

bool Spinner::hasShortRange() const {
    return maximum_ - minimum_ <= kLongestRange;  // not of infinite ones either
}

double Spinner::getStep() const {
    const double reach = hasShortRange() ? static_cast<double>(maximum_) - minimum_
                                         : std::max(1.0, std::abs(static_cast<double>(value_)));
    const double step = std::pow(10.0, std::floor(std::log10(reach / kStepsPerRange)));
    return std::max(std::isfinite(step) ? step : 0.0, std::pow(10.0, -precision_));
}

double Spinner::getFactor(const wxKeyboardState& keys) const {
    return keys.ShiftDown() ? 0.1 : keys.ControlDown() ? 10.0 : 1.0;
}

void Spinner::stepBy(double steps) {
    const double change = steps * getStep();
    const double finest = std::pow(10.0, -precision_);
    changeTo((std::isnan(value_) ? default_ : value_) +
             std::copysign(std::max(std::abs(change), finest), change));
}

wxString Spinner::format(int decimals) const {
    // Beyond this, the digits of a float say nothing.
    constexpr float kLongForm = 1e9f;
    if (!(std::abs(value_) < kLongForm)) {
        return toWxString(Str::getNumberText(value_));
    }
    wxString text = wxString::FromCDouble(static_cast<double>(value_), decimals);
    if (text.Contains(".")) {
        text = text.Left(text.find_last_not_of('0') + 1);
        text = text.EndsWith(".") ? text.RemoveLast() : text;
    }
    return text == "-0" ? "0" : text;
}

wxSize Spinner::DoGetBestClientSize() const {
    return FromDIP(wxSize(width_, skin().controlHeight));
}

wxRect Spinner::getArrowArea() const {
    const wxRect area = GetClientRect();
    const int width = area.width < FromDIP(kNarrow) ? 0 : FromDIP(kArrowWidth);
    return {area.x + area.width - width, area.y, width, area.height};
}

wxRect Spinner::getTextArea() const {
    const int padding = FromDIP(getArrowArea().width == 0 ? skin().padding / 2 : skin().padding);
    wxRect area = GetClientRect().Deflate(padding, 0);
    if (getArrowArea().width > 0) {
        area.width = getArrowArea().x - area.x;
    }
    return area;
}

void Spinner::paint(wxGraphicsContext& canvas) {
    BoxState state = getBoxState();
    state.hovered = state.hovered && !editor_.isActive();
    drawField(canvas, *this, GetClientRect(), skin(), state);
    const wxRect area = getTextArea();
    if (editor_.isActive()) {
        editor_.paint(canvas, area, GetFont(), skin());
    } else {
        paintBar(canvas);
        canvas.SetFont(GetFont(), getTextColor());
        // As many decimals as fit.
        int decimals = precision_;
        double width = 0.0;
        for (;; --decimals) {
            canvas.GetTextExtent(format(decimals), &width, nullptr);
            if (width <= area.width || decimals == 0) {
                break;
            }
        }
        drawText(canvas, format(decimals), area, GetFont(), getTextColor());
    }
    paintArrows(canvas);
}

void Spinner::paintBar(wxGraphicsContext& canvas) const {
    if (!hasShortRange() || minimum_ == maximum_ || std::isnan(value_)) {
        return;
    }
    const int height = FromDIP(2);
    const wxRect area = GetClientRect().Deflate(1, 1);
    const float part = (value_ - minimum_) / (maximum_ - minimum_);
    canvas.SetPen(*wxTRANSPARENT_PEN);
    canvas.SetBrush(wxBrush(IsEnabled() ? skin().accent : skin().raised));
    canvas.DrawRectangle(area.x + 1, area.y + area.height - height,
                         std::round(part * static_cast<float>(area.width - 2)), height);
}

void Spinner::paintArrows(wxGraphicsContext& canvas) const {
    const wxRect area = getArrowArea();
    if (area.width == 0) {
        return;
    }
    const double x = area.x + area.width / 2.0 - FromDIP(1);
    const double y = area.y + area.height / 2.0;
    const wxColour color = !IsEnabled()                       ? skin().raised
                           : isHovered() || drag_.has_value() ? skin().text
                                                              : skin().textDisabled;
    for (const Direction direction : {Direction::Up, Direction::Down}) {
        const double sign = direction == Direction::Up ? -1.0 : 1.0;
        drawArrow(canvas, {x, y + sign * FromDIP(4)}, FromDIP(6), direction, color,
                  FromDIP(10) * 0.12);
    }
}

void Spinner::beginTyping(const wxString& text) {
    typedBefore_ = text;
    SetCursor(wxCursor(wxCURSOR_IBEAM));
    editor_.begin(text);
}

void Spinner::endTyping(bool accept) {
    if (!editor_.isActive()) {
        return;
    }
    editor_.end();
    SetCursor(wxCursor(wxCURSOR_SIZEWE));
    // What has only been looked at keeps decimals that did not show.
    const Optional<double> typed = accept && editor_.getText() != typedBefore_
                                       ? evaluateExpression(toString(editor_.getText()))
                                       : std::nullopt;
    if (typed) {
        changeTo(*typed);
    }
}

}  // namespace tavrin::widgets
