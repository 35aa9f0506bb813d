#include <Views/LaidOutTree.h>

#include <Views/Painters.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

using namespace platform;

namespace {

View box(double width, double height) {
    return rectangle().frame(width, height);
}

/// Frames of the leaves in the order of drawing: "x y w h", one a line.
void collect(const LaidOutNode& node, std::string& out) {
    if (node.children.empty() && node.kind != LaidOutNode::Kind::layers) {
        const auto number = [](double value) { return std::to_string(static_cast<long>(value * 10)); };
        out += number(node.frame.x) + " " + number(node.frame.y) + " " + number(node.frame.width) + " " +
               number(node.frame.height) + "\n";
    }
    for (const auto& child : node.children)
        collect(child, out);
}

/// In tenths of a point.
std::string framesOf(const View& view, Size size, bool isRightToLeft = false) {
    ViewContext context;
    context.isRightToLeft = isRightToLeft;
    std::string out;
    collect(layOut(view, size, context).root, out);
    return out;
}

TEST(Layout, StacksPlaceTheirChildren) {
    struct Case {
        const char* name;
        View view;
        std::string frames;
    };
    const auto leading = HorizontalAlignment::leading;
    const auto top = VerticalAlignment::top;
    const std::vector<Case> cases = {
        {"a row is centred and spaced by eight", hstack({}, {box(10, 10), box(20, 20)}),
         "310 450 100 100\n490 400 200 200\n"},
        {"a column aligned leading", vstack({.alignment = leading, .spacing = 2}, {box(10, 10), box(20, 20)}),
         "400 340 100 100\n400 460 200 200\n"},
        {"an empty view takes no spacing", hstack({.spacing = 4}, {box(10, 10), View(), box(10, 10)}),
         "380 450 100 100\n520 450 100 100\n"},
        {"a spacer pushes to the ends and has no spacing beside it",
         hstack({.alignment = top, .spacing = 4}, {box(10, 10), spacer(), box(10, 10)}),
         "0 450 100 100\n900 450 100 100\n"},
        {"a bar is as high as its row",
         hstack({.spacing = 4}, {rectangle().frame(3, std::nullopt), box(10, 40)}).fixedHeight(),
         "415 300 30 400\n485 300 100 400\n"},
        {"padding by side", box(10, 10).padding({.top = 1, .leading = 2, .bottom = 3, .trailing = 4}),
         "440 440 100 100\n"},
        {"a filling frame aligns its content", box(10, 10).filling({.horizontal = leading, .vertical = top}),
         "0 0 100 100\n"},
        {"a background has the frame of its content", box(10, 20).background(rectangle()),
         "450 400 100 200\n450 400 100 200\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(framesOf(c.view, {100, 100}), c.frames) << c.name;
}

TEST(Layout, LanguagesFromTheRightMirrorEveryFrame) {
    const View view = hstack({.spacing = 0}, {box(10, 10).padding({.leading = 5}), spacer(), box(20, 10)});
    EXPECT_EQ(framesOf(view, {100, 10}), "50 0 100 100\n800 0 200 100\n");
    EXPECT_EQ(framesOf(view, {100, 10}, true), "850 0 100 100\n0 0 200 100\n");
}

TEST(Layout, TheFirstCandidateThatFitsIsShownElseTheLast) {
    const auto choice = [](double height) {
        return framesOf(firstThatFits(Axis::vertical, {box(3, 30), box(2, 20), box(1, 10)}).frame(10, height),
                        {10, height});
    };
    EXPECT_EQ(choice(30), "35 0 30 300\n");
    EXPECT_EQ(choice(29.9), "40 49 20 200\n");
    EXPECT_EQ(choice(10), "45 0 10 100\n");
    EXPECT_EQ(choice(5), "45 -25 10 100\n");
}

const LaidOutNode* firstText(const LaidOutNode& node) {
    if (node.kind == LaidOutNode::Kind::text || node.kind == LaidOutNode::Kind::timer) return &node;
    for (const auto& child : node.children) {
        if (const auto* found = firstText(child)) return found;
    }
    return nullptr;
}

LaidOutNode laidOutText(const View& view, double width, Date now = Date(0)) {
    ViewContext context;
    context.now = now;
    return *firstText(layOut(view, {width, 100}, context).root);
}

TEST(Layout, LinesHaveTheHeightOfTheirFontWhateverTheirScript) {
    for (const auto& [size, height] : {std::pair(10, 13), {11, 14}, {12, 16}, {30, 36}}) {
        for (const char* content : {"Review", "会議の予定", "اجتماع", "🎉", ""}) {
            EXPECT_EQ(laidOutText(text(content).font(system(size)), 300).frame.height, height) << content;
        }
    }
}

TEST(Layout, LongTextsBreakAndAreTruncatedAtTheirLineLimit) {
    const std::string title = "A title that is much longer than any of the rows in which it has to stand";
    const auto limited = [&](int lines) {
        return laidOutText(text(title).font(system(11)).lineLimit(lines), 90);
    };
    EXPECT_EQ(limited(1).lines, 1);
    EXPECT_TRUE(limited(1).isTruncated);
    EXPECT_EQ(limited(2).lines, 2);
    EXPECT_EQ(limited(2).frame.height, 28);
    EXPECT_FALSE(limited(0).isTruncated);
    EXPECT_GT(limited(0).lines, 3);
    EXPECT_FALSE(laidOutText(text("Short").lineLimit(1), 90).isTruncated);
    std::string novel;
    while (novel.size() < 1'000'000)
        novel += "会議, and so on. ";
    const auto begin = laidOutText(text(novel).lineLimit(2), 90);
    EXPECT_EQ(begin.lines, 2);
    EXPECT_TRUE(begin.truncatedText.starts_with("会議, and") && begin.truncatedText.ends_with("…"));
    EXPECT_EQ(begin.text.size(), novel.size());
    const auto unbroken = laidOutText(text(std::string(300, 'W')).lineLimit(2), 90);
    EXPECT_LE(unbroken.frame.width, 90);
    EXPECT_EQ(unbroken.lines, 2);
}

TEST(Layout, ATextShrinksToItsFactorBeforeItIsTruncated) {
    const View view = text("10:00 AM–11:30 AM").font(system(11)).minimumScaleFactor(0.5);
    const double full = laidOutText(view, 500).frame.width;
    const auto shrunk = laidOutText(view, full * 0.75);
    EXPECT_NEAR(shrunk.textScale, 0.75, 1e-9);
    EXPECT_EQ(shrunk.lines, 1);
    EXPECT_FALSE(shrunk.isTruncated);
    EXPECT_EQ(shrunk.frame.height, 14);
    const auto tooNarrow = laidOutText(view, full * 0.4);
    EXPECT_DOUBLE_EQ(tooNarrow.textScale, 0.5);
    EXPECT_TRUE(tooNarrow.isTruncated);
    EXPECT_EQ(tooNarrow.lines, 1);
}

TEST(Layout, ATextIsTightenedBeforeItShrinksUnlessItsLettersJoin) {
    const auto fitted = [](const char* content, double share) {
        const View view = text(content).font(system(11)).allowsTightening().minimumScaleFactor(0.5);
        return laidOutText(view, laidOutText(view, 500).frame.width * share);
    };
    EXPECT_DOUBLE_EQ(fitted("10:00 AM–11:30 AM", 0.97).textScale, 1);
    EXPECT_FALSE(fitted("10:00 AM–11:30 AM", 0.97).isTruncated);
    const double both = fitted("10:00 AM–11:30 AM", 0.8).textScale;
    EXPECT_GT(both, 0.8);
    EXPECT_LT(both, 1);
    EXPECT_NEAR(fitted("اجتماع الفريق", 0.97).textScale, 0.97, 1e-9);
    EXPECT_LT(fitted("1", 0.97).textScale, 1);
}

TEST(Layout, ACutOffTextSaysWhatIsLeftOfIt) {
    const std::pair<const char*, bool> cases[] = {
        {"Weekly planning of everything that there is to plan", false},
        {"Weekly planning of everything that there is to plan", true},
        {"תכנון שבועי של כל מה שיש לתכנן השבוע", false},
        {"設計レビュー会議の予定と次の予定", true}};
    for (const auto& [content, isRightToLeft] : cases) {
        ViewContext context;
        context.isRightToLeft = isRightToLeft;
        const auto tree = layOut(text(content).lineLimit(2), {60, 100}, context);
        const auto& node = tree.root.children.at(0);
        ASSERT_TRUE(node.truncatedText.ends_with("…")) << node.truncatedText;
        const auto kept = node.truncatedText.substr(0, node.truncatedText.size() - 3);
        EXPECT_GT(kept.size(), 8U);
        EXPECT_TRUE(std::string_view(content).starts_with(kept)) << kept;
    }
    EXPECT_EQ(laidOutText(text("Short").lineLimit(1), 90).truncatedText, "");
}

TEST(Layout, BreaksAndControlCharactersOfATextBecomeBlanks) {
    EXPECT_EQ(laidOutText(text("a\r\nb\tc\x01"
                               "d\xE2\x80\xA8"
                               "e\xC2\x85"
                               "f"),
                          300)
                  .text,
              "a b c d e f");
    EXPECT_EQ(laidOutText(text("bad \xFF byte"), 300).text, "bad \xEF\xBF\xBD byte");
    EXPECT_EQ(laidOutText(text("line\nbreaks\n\nin a title").lineLimit(1), 300).lines, 1);
}

TEST(Layout, TextsOfARowShareOneBaseline) {
    ViewContext context;
    const View row = hstack({.alignment = VerticalAlignment::firstTextBaseline},
                            {text("12").font(system(30)), text("12").font(system(11))});
    const auto tree = layOut(row, {200, 60}, context);
    const auto& children = tree.root.children[0].children;
    ASSERT_EQ(children.size(), 2U);
    EXPECT_GT(children[1].frame.y, children[0].frame.y + 10);
    EXPECT_LT(children[1].frame.bottom(), children[0].frame.bottom());
}

TEST(Layout, ARingBesideATextDoesNotMoveItsBaseline) {
    const View remark = hstack({.spacing = 4}, {progress(0.5).frame(12, 12), text("left").font(system(11))});
    const View row = hstack({.alignment = VerticalAlignment::lastTextBaseline},
                            {text("10:00").font(system(11)), remark.padding({.top = 4, .bottom = 2})});
    const auto tree = layOut(row.fixedHeight(), {200, 40}, {});
    const auto& children = tree.root.children[0].children;
    EXPECT_EQ(tree.root.children[0].frame.height, 20);
    EXPECT_EQ(children[0].frame.y, children[1].children[1].frame.y);
}

TEST(Timer, CountsBegunSecondsDownAndWholeSecondsUpAndSaysWhenItChanges) {
    const Date target(1'000'000);
    const std::pair<double, const char*> cases[] = {{-59, "0:59"},      {-58.5, "0:59"},  {-0.2, "0:01"},
                                                    {0, "0:00"},        {0.9, "0:00"},    {61, "1:01"},
                                                    {-3600, "1:00:00"}, {725.5, "12:05"}, {3723, "1:02:03"}};
    for (const auto& [offset, shown] : cases)
        EXPECT_EQ(laidOutText(timer(target), 300, target.addingTimeInterval(offset)).text, shown) << offset;
    ViewContext egypt;
    egypt.now = target.addingTimeInterval(-59);
    egypt.locale = {.identifier = "ar_EG", .languages = {"ar"}};
    EXPECT_EQ(layOut(timer(target), {300, 100}, egypt).root.children.at(0).text, "٠:٥٩");
    const auto tree = layOut(vstack({}, {text("x"), timer(Date(1000))}), {100, 100}, {});
    EXPECT_EQ(tree.nextTick(Date(941.25)), Date(942));
    EXPECT_EQ(tree.nextTick(Date(942)), Date(943));
    EXPECT_FALSE(layOut(text("x"), {100, 100}, {}).nextTick(Date(0)));
}

TEST(TapTargets, TheInnermostLinkIsHitAndLabelsLeaveInnerLinksOut) {
    const Url row = Url::parse("heedbanner://preview/1").value();
    const Url call = Url::parse("heedbanner://joinCall/1").value();
    const View view = link(row, hstack({.spacing = 0}, {text("Title"), spacer(),
                                                        link(call, box(20, 20)).accessibilityLabel("Join")}));
    const auto tree = layOut(view, {100, 20}, {});
    const auto links = tree.links();
    ASSERT_EQ(links.size(), 2U);
    EXPECT_EQ(links[0].label, "Title");
    EXPECT_EQ(links[1].label, "Join");
    EXPECT_EQ(links[1].frame, (Rect{80, 0, 20, 20}));
    EXPECT_EQ(tree.linkAt({79.9, 5})->url, row);
    EXPECT_EQ(tree.linkAt({80, 5})->url, call);
    EXPECT_FALSE(tree.linkAt({100, 5}));
}

TEST(Accessibility, SaysLinksAndWhatIsOutsideThemAndNothingTwice) {
    using Role = AccessibleElement::Role;
    const Url row = Url::parse("heedbanner://preview/1").value();
    const View camera = box(20, 20).accessibilityHidden();
    const View view =
        vstack({.spacing = 0},
               {text("Header"), text("hidden").accessibilityHidden(), text(""),
                link(row, hstack({}, {text("Title"), inactiveLink(camera).accessibilityLabel("Join")}))
                    .accessibilityLabel("An event."),
                inactiveLink(text("later")), box(9, 9).accessibilityLabel("A square")});
    const auto tree = layOut(view, {100, 200}, {});
    std::vector<std::pair<AccessibleElement::Role, std::string>> said;
    for (const auto& element : tree.accessibleElements())
        said.emplace_back(element.role, element.label);
    EXPECT_EQ(said,
              (std::vector<std::pair<AccessibleElement::Role, std::string>>{{Role::text, "Header"},
                                                                            {Role::link, "An event."},
                                                                            {Role::inactiveLink, "Join"},
                                                                            {Role::inactiveLink, "later"},
                                                                            {Role::image, "A square"}}));
    EXPECT_EQ(tree.links().size(), 1U);
}

}  // namespace
