#include <WidgetHost/LiveDrawing.h>

#include <cmath>
#include <utility>

namespace platform {

namespace {

std::optional<Date> earlier(std::optional<Date> a, std::optional<Date> b) {
    if (!a || !b) return a ? a : b;
    return *a < *b ? a : b;
}

/// What nobody sees waits for the next whole minute, unless `moment` belongs to one.
Date atWholeMinute(Date moment) {
    constexpr double minute = 60, belonging = 0.5;
    const double seconds = moment.timeIntervalSinceReferenceDate();
    const double begun = std::floor(seconds / minute) * minute;
    return seconds - begun < belonging ? moment : Date(begun + minute);
}

}  // namespace

LiveDrawing::LiveDrawing(std::shared_ptr<WakeSchedule> wakes, Show show)
    : wakes_(std::move(wakes)), show_(std::move(show)), alarm_(wakes_->add([this] { wake(); })) {}

void LiveDrawing::draw(Content content, const ViewContext& context) {
    content_ = std::move(content);
    context_ = context;
    drawAgain(Reason::content, true);
}

void LiveDrawing::drawAgain(Reason reason, bool makesView) {
    context_.now = wakes_->now();
    if (makesView) {
        context_.changes = std::make_shared<ChangeMoments>();
        view_ = content_(context_);
    }
    LaidOutTree tree = layOutWidget(view_, context_);
    viewChange_ = tree.changesAt;
    tick_ = tree.nextTick(context_.now);
    if (show_(std::move(tree), reason)) isSeen_ = false;
    arm();
}

std::optional<Date> LiveDrawing::nextChange() const {
    return earlier(viewChange_, tick_);
}

void LiveDrawing::wake() {
    const Date now = wakes_->now();
    const auto change = nextChange();
    if (!change || now < *change) return arm();
    drawAgain(Reason::time, viewChange_ && now >= *viewChange_);
}

void LiveDrawing::wasSeen() {
    const bool wasSeenBefore = std::exchange(isSeen_, true);
    const auto change = nextChange();
    if (change && wakes_->now() >= *change) return wake();
    if (!wasSeenBefore) arm();
}

void LiveDrawing::setHidden(bool isHidden) {
    isHidden_ = isHidden;
    arm();
}

void LiveDrawing::arm() {
    const auto change = nextChange();
    if (!change) return alarm_->set(std::nullopt);
    alarm_->set(isSeen_ && !isHidden_ ? *change : atWholeMinute(*change));
}

}  // namespace platform
