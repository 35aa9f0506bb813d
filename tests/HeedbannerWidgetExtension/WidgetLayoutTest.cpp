#include <HeedbannerWidgetExtension/Views/EventCountdownView.h>
#include <HeedbannerWidgetExtension/Views/EventListViews.h>
#include <Views/DrawingWork.h>
#include <Views/Painters.h>

#include <gmock/gmock.h>

#include "Drawing.h"

using namespace hbr;
using namespace platform;
using Kind = LaidOutNode::Kind;
using enum WidgetFamily;

namespace {

/// What is drawn where nobody would want it, a line each.
class Examination {
  public:
    Examination(const LaidOutTree& tree, double inset)
        : content_{16, inset, tree.size.width - 32, tree.size.height - 2 * inset} {
        examine(tree.root);
    }

    const std::vector<std::string>& faults() const { return faults_; }

  private:
    static constexpr double tolerance = 0.01;

    void examine(const LaidOutNode& node) {
        const bool isText = node.kind == Kind::text || node.kind == Kind::timer;
        if (isText || node.kind == Kind::symbol || node.kind == Kind::progress || node.kind == Kind::link) {
            const Rect& frame = node.frame;
            if (frame.x < content_.x - tolerance || frame.right() > content_.right() + tolerance ||
                frame.y < content_.y - tolerance || frame.bottom() > content_.bottom() + tolerance) {
                faults_.push_back("outside: " + node.text + node.label);
            }
        }
        if (isText || node.kind == Kind::symbol) {
            for (const auto* other : drawn_) {
                if (overlap(other->frame, node.frame))
                    faults_.push_back("over each other: " + other->text + " and " + node.text);
            }
            drawn_.push_back(&node);
        }
        const bool isTitle = node.font.isBold && node.font.size == 11 && !node.font.hasMonospacedDigits;
        if (node.isTruncated && !isTitle) faults_.push_back("cut off: " + node.truncatedText);
        if (node.textScale < 0.6) faults_.push_back("tiny: " + node.text);
        for (const auto& child : node.children)
            examine(child);
    }

    static bool overlap(const Rect& a, const Rect& b) {
        return a.x < b.right() - tolerance && b.x < a.right() - tolerance && a.y < b.bottom() - tolerance &&
               b.y < a.bottom() - tolerance;
    }

    Rect content_;
    std::vector<const LaidOutNode*> drawn_;
    std::vector<std::string> faults_;
};

/// Of every kind, with titles of every kind, all under way or all to come.
std::vector<Event> hardEvents(const test::Drawing& drawing, double startMinute) {
    const std::vector<std::string> titles = {"設計レビュー 🎉 第二回 とても長い題名がここに続きます",
                                             "اجتماع الفريق الأسبوعي مع العملاء في المكتب الجديد",
                                             std::string(300, 'W'),
                                             "",
                                             "one\ntwo\r\n\nthree\x01 פגישה עם Anna \xFF",
                                             "ประชุมทีมประจำสัปดาห์ साप्ताहिक टीम बैठक"};
    std::vector<Event> events;
    for (const auto& title : titles) {
        Event event = drawing.event(std::to_string(events.size()), startMinute, startMinute + 190);
        event.title = title;
        event.type = events.size() == 3   ? Event::EventType::appleReminder
                     : events.size() == 4 ? Event::EventType::hbrReminder
                                          : Event::EventType::calendarEvent;
        if (events.size() % 2 == 0) event.videoConferenceLinks = {test::callLink()};
        if (events.size() % 3 == 1) event.travelTime = 4500;
        events.push_back(std::move(event));
    }
    return events;
}

TEST(Widgets, DrawWholeTextsInsideTheirContentInEveryLanguage) {
    struct Speech {
        const char* locale;
        bool isPseudo = false;
    };
    for (const auto& speech : {Speech{"en_US"}, {"de_DE"}, {"he_IL"}, {"en_US", true}}) {
        test::Drawing drawing(speech.locale, speech.isPseudo);
        const auto inputs = drawing.inputs();
        const auto examine = [&](const auto& view, WidgetFamily family, const char* name, double inset = 16) {
            EXPECT_THAT(Examination(drawing.draw(view, family), inset).faults(), testing::IsEmpty())
                << name << " " << nameOf(family) << " in " << speech.locale
                << (speech.isPseudo ? ", pseudo" : "");
        };
        for (const auto family : {systemSmall, systemMedium, systemLarge}) {
            // Ten o'clock in the evening two days on, with the longest day and the longest times.
            for (const double start : {3.0, 2 * 1440 + 720.0}) {
                auto events = hardEvents(drawing, start);
                for (std::size_t turn = 0; turn < events.size(); ++turn) {
                    std::rotate(events.begin(), events.begin() + 1, events.end());
                    const UpcomingEventsEntry upcoming{drawing.now, events};
                    examine(UpcomingEventsWidgetView{upcoming, inputs}, family, "upcoming");
                    const NextEventEntry next{drawing.now, events.front()};
                    // The highest pill under the highest headline: it is not compressed, the margin is.
                    if (family != systemLarge)
                        examine(NextEventCountdownWidgetView{next, inputs}, family, "countdown", 8);
                }
            }
            auto events = hardEvents(drawing, -61);
            for (std::size_t turn = 0; turn < events.size(); ++turn) {
                std::rotate(events.begin(), events.begin() + 1, events.end());
                const CurrentEventsEntry current{drawing.now, events};
                examine(CurrentEventsWidgetView{current, inputs}, family, "current");
            }
            const CurrentEventsEntry nothing{drawing.now, {}};
            examine(CurrentEventsWidgetView{nothing, inputs}, family, "nothing");
        }
    }
}

TEST(Widgets, ShapeEveryTextAndDrawEverySymbolOnceForAFrame) {
    test::Drawing drawing;
    std::vector<Event> events;
    for (int i = 0; i < 3; ++i) {
        events.push_back(drawing.event("once " + std::to_string(i), 171, 192));
        events.back().videoConferenceLinks = {test::callLink()};
    }
    const auto inputs = drawing.inputs();
    const UpcomingEventsEntry entry{drawing.now, events};
    const auto frame = [&] {
        const auto before = DrawingWork::soFar();
        const auto tree = drawing.draw(UpcomingEventsWidgetView{entry, inputs}, systemMedium);
        paintPixels(tree, 2);
        return DrawingWork::soFar() - before;
    };
    // The headline and the day, drawn by other tests, may be known already; three titles, one time, one
    // camera.
    const auto first = frame();
    EXPECT_GE(first.shapedTexts, 4U);
    EXPECT_LE(first.shapedTexts, 6U);
    EXPECT_EQ(first.rasterizedPictures, 1U);
    EXPECT_EQ(frame(), DrawingWork{});
    // One more title, and its cut off form.
    events[1].title = std::string("once and again ") + std::string(200, 'm');
    const auto before = DrawingWork::soFar();
    const UpcomingEventsEntry changed{drawing.now, events};
    paintPixels(drawing.draw(UpcomingEventsWidgetView{changed, inputs}, systemMedium), 2);
    EXPECT_EQ(DrawingWork::soFar() - before, (DrawingWork{.shapedTexts = 2, .rasterizedPictures = 0}));
}

}  // namespace
