#include "WidgetCanvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "RoundedRectangle.h"

namespace platform {

namespace {

constexpr double containerRadius = 20;
constexpr double hoverOpacity = 0.06;
/// Points.
constexpr double focusLineWidth = 2, focusOffset = 2;
constexpr double badgeDiameter = 14, badgeInset = 6;
/// Seconds between two times that a screen reader hears of what time changes; texts by the minute are all
/// said.
constexpr double silence = 55;

/// Where nothing blends, the ground goes to the corners.
void makeSquare(LaidOutTree& tree) {
    const auto square = [&tree](auto& self, LaidOutNode& node) -> void {
        if (node.kind == LaidOutNode::Kind::shape && node.frame.size() == tree.size) node.cornerRadius = 0;
        for (auto& child : node.children)
            self(self, child);
    };
    square(square, tree.root);
}

void setSource(cairo_t* cairo, Color color) {
    cairo_set_source_rgba(cairo, color.red, color.green, color.blue, color.alpha);
}

}  // namespace

WidgetCanvas::WidgetCanvas(GtkFixed* parent, std::string name, std::shared_ptr<WakeSchedule> wakes,
                           std::function<void(const Url&)> tapped)
    : parent_(parent),
      area_(retained(gtk_drawing_area_new())),
      badge_(retained(gtk_event_box_new())),
      buttons_((gtk_fixed_put(parent, area_.get(), 0, 0), parent), {std::move(tapped),
                                                                    [this](std::size_t target) {
                                                                        if (target < outlines_.size())
                                                                            redraw(outlines_[target].frame);
                                                                    }}),
      name_(std::move(name)),
      drawing_(std::move(wakes), [this](LaidOutTree tree, LiveDrawing::Reason reason) {
          return take(std::move(tree), reason == LiveDrawing::Reason::content ? Speech::now : Speech::seldom);
      }) {
    gtk_widget_set_has_window(area_.get(), FALSE);
    atk_object_set_role(gtk_widget_get_accessible(area_.get()), ATK_ROLE_IMAGE);
    g_signal_connect(area_.get(), "draw",
                     G_CALLBACK(+[](GtkWidget*, cairo_t* cairo, gpointer self) -> gboolean {
                         static_cast<WidgetCanvas*>(self)->draw(cairo);
                         return FALSE;
                     }),
                     this);
    g_signal_connect(area_.get(), "map", G_CALLBACK(+[](GtkWidget*, gpointer self) {
                         static_cast<WidgetCanvas*>(self)->drawing_.setHidden(false);
                     }),
                     this);
    g_signal_connect(area_.get(), "unmap", G_CALLBACK(+[](GtkWidget*, gpointer self) {
                         static_cast<WidgetCanvas*>(self)->drawing_.setHidden(true);
                     }),
                     this);
    gtk_widget_show(area_.get());
    gtk_event_box_set_visible_window(GTK_EVENT_BOX(badge_.get()), FALSE);
    gtk_event_box_set_above_child(GTK_EVENT_BOX(badge_.get()), TRUE);
    atk_object_set_role(gtk_widget_get_accessible(badge_.get()), ATK_ROLE_LABEL);
    gtk_fixed_put(parent, badge_.get(), 0, 0);
}

WidgetCanvas::~WidgetCanvas() {
    g_signal_handlers_disconnect_by_data(area_.get(), this);
}

StackedSize WidgetCanvas::size() const {
    const Size points = sizeOf(look_.context.family);
    return {static_cast<int>(std::ceil(points.width * look_.scale)),
            static_cast<int>(std::ceil(points.height * look_.scale))};
}

void WidgetCanvas::show(const WidgetContent& content, const Look& look) {
    look_ = look;
    gtk_widget_set_size_request(area_.get(), size().width + 2 * margin(), size().height + 2 * margin());
    drawing_.draw(content, look.context);
}

bool WidgetCanvas::take(LaidOutTree tree, Speech speech) {
    if (look_.isFilled) makeSquare(tree);
    outlines_ = targetOutlines(tree);
    const auto changes = painted_.set(std::move(tree), look_.scale * look_.deviceScale);
    buttons_.set(said(painted_.tree().links(), speech), margin(), look_.scale);
    auto disabled = painted_.tree().accessibleElements();
    std::erase_if(disabled, [](const AccessibleElement& element) {
        return element.role != AccessibleElement::Role::inactiveLink;
    });
    buttons_.setDisabled(disabled, margin(), look_.scale);
    placeBadge();
    for (const Rect& change : changes)
        redraw(change);
    return !changes.empty();
}

void WidgetCanvas::redraw(const Rect& points) {
    const Rect around = widened(points, focusOffset + focusLineWidth);
    const int x = static_cast<int>(std::floor(around.x * look_.scale)) + margin();
    const int y = static_cast<int>(std::floor(around.y * look_.scale)) + margin();
    gtk_widget_queue_draw_area(area_.get(), x, y, static_cast<int>(std::ceil(around.width * look_.scale)) + 1,
                               static_cast<int>(std::ceil(around.height * look_.scale)) + 1);
}

void WidgetCanvas::draw(cairo_t* cairo) {
    drawing_.wasSeen();
    cairo_save(cairo);
    cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
    setSource(cairo, look_.isFilled ? look_.context.palette().container : Color{0, 0, 0, 0});
    cairo_paint(cairo);
    cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
    if (!look_.isFilled) {
        const auto [width, height] = size();
        shadow_.draw(cairo, {width, height, containerRadius * look_.scale, look_.deviceScale},
                     look_.context.appearance);
    }
    cairo_translate(cairo, margin(), margin());
    painted_.draw(cairo, look_.deviceScale);
    cairo_scale(cairo, look_.scale, look_.scale);
    drawTargets(cairo);
    drawBadge(cairo);
    cairo_restore(cairo);
}

void WidgetCanvas::drawTargets(cairo_t* cairo) {
    if (const auto hovered = buttons_.hovered(); hovered && *hovered < outlines_.size()) {
        const TargetOutline& outline = outlines_[*hovered];
        const double ink = look_.context.appearance == Appearance::dark ? 1 : 0;
        setSource(cairo, {ink, ink, ink, hoverOpacity});
        const double widgetRadius = look_.isFilled ? 0 : containerRadius;
        addRoundedRectangle(cairo, outline.frame,
                            outline.isWholeWidget ? widgetRadius : outline.cornerRadius);
        cairo_fill(cairo);
    }
    GtkWidget* window = gtk_widget_get_toplevel(area_.get());
    if (!gtk_window_is_active(GTK_WINDOW(window)) || !gtk_window_get_focus_visible(GTK_WINDOW(window)))
        return;
    if (const auto focused = buttons_.focused(); focused && *focused < outlines_.size()) {
        const TargetOutline& outline = outlines_[*focused];
        const double lineDistance = focusOffset + focusLineWidth / 2;
        // Round even in a square widget, like the rings of the rows.
        const double radius = outline.isWholeWidget ? containerRadius : outline.cornerRadius;
        const double distance = outline.isWholeWidget ? -lineDistance : lineDistance;
        setSource(cairo, look_.context.palette().primary);
        cairo_set_line_width(cairo, focusLineWidth);
        addRoundedRectangle(cairo, widened(outline.frame, distance), radius + distance);
        cairo_stroke(cairo);
    }
}

Rect WidgetCanvas::badgeFrame() const {
    const double width = sizeOf(look_.context.family).width;
    const double x = look_.context.isRightToLeft ? badgeInset : width - badgeInset - badgeDiameter;
    return {x, badgeInset, badgeDiameter, badgeDiameter};
}

void WidgetCanvas::drawBadge(cairo_t* cairo) const {
    if (!badgeText_) return;
    const Rect frame = badgeFrame();
    const double x = frame.x + frame.width / 2, y = frame.y + frame.height / 2;
    setSource(cairo, look_.context.palette().orange);
    cairo_arc(cairo, x, y, frame.width / 2, 0, 2 * std::numbers::pi);
    cairo_fill(cairo);
    // An exclamation mark, in the colour that stands out from orange.
    setSource(cairo, look_.context.palette().container);
    cairo_set_line_width(cairo, 1.8);
    cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
    cairo_move_to(cairo, x, y - 3.6);
    cairo_line_to(cairo, x, y + 0.4);
    cairo_stroke(cairo);
    cairo_arc(cairo, x, y + 3.5, 1.1, 0, 2 * std::numbers::pi);
    cairo_fill(cairo);
}

void WidgetCanvas::setBadge(std::optional<std::string> tooltip) {
    if (tooltip == badgeText_) return;
    badgeText_ = std::move(tooltip);
    gtk_widget_set_tooltip_text(badge_.get(), badgeText_ ? badgeText_->c_str() : nullptr);
    atk_object_set_name(gtk_widget_get_accessible(badge_.get()), badgeText_ ? badgeText_->c_str() : "");
    placeBadge();
    if (!painted_.isEmpty()) redraw(badgeFrame());
}

void WidgetCanvas::placeBadge() {
    gtk_widget_set_visible(badge_.get(), badgeText_.has_value());
    if (!badgeText_) return;
    const Rect frame = badgeFrame();
    const auto whole = [this](double length) { return static_cast<int>(std::lround(length * look_.scale)); };
    const int x = margin() + whole(frame.x), y = margin() + whole(frame.y);
    gtk_fixed_move(parent_, badge_.get(), x, y);
    gtk_widget_set_size_request(badge_.get(), whole(frame.width), whole(frame.height));
}

void WidgetCanvas::setObscured(bool isObscured) {
    if (isObscured == isObscured_) return;
    isObscured_ = isObscured;
    drawing_.setHidden(isObscured);
    if (!isObscured) gtk_widget_queue_draw(area_.get());
}

/// The targets with the labels that assistive tools are to know; also says what is outside of them.
std::vector<TapTarget> WidgetCanvas::said(std::vector<TapTarget> targets, Speech speech) {
    const auto isKnown = [](const TapTarget& a, const TapTarget& b) { return a.url == b.url; };
    const bool isQuiet = speech == Speech::seldom &&
                         drawing_.shownAt().timeIntervalSince(saidAt_) < silence &&
                         std::ranges::equal(targets, said_, isKnown);
    if (isQuiet) {
        for (std::size_t i = 0; i < targets.size(); ++i)
            targets[i].label = said_[i].label;
        return targets;
    }
    said_ = targets;
    saidAt_ = drawing_.shownAt();
    std::string words;
    for (const AccessibleElement& element : painted_.tree().accessibleElements()) {
        // Links say themselves, and so do those that cannot be used now.
        using Role = AccessibleElement::Role;
        if (element.role == Role::text || element.role == Role::image)
            words += (words.empty() ? "" : ", ") + element.label;
    }
    if (words.empty()) words = name_;
    AtkObject* accessible = gtk_widget_get_accessible(area_.get());
    const char* before = atk_object_get_name(accessible);
    if (!before || words != before) atk_object_set_name(accessible, words.c_str());
    return targets;
}

}  // namespace platform
