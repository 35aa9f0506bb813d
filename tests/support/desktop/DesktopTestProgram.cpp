// Shows fixed widgets, says on standard output what happened to them, and takes orders on standard input, a
// line each.

#include <Desktop/CardWindow.h>
#include <Desktop/GalleryWindow.h>
#include <Desktop/WidgetDesk.h>
#include <System/MainQueue.h>
#include <glib-unix.h>
#include <unistd.h>

#include <iostream>
#include <sstream>

namespace {

using namespace platform;

void say(const std::string& line) {
    std::cout << line << std::endl;
}

Url url(const std::string& text) {
    return Url::parse(text).value();
}

View row(const ViewContext& context, const std::string& title, const std::string& id, View aside) {
    const Palette& palette = context.palette();
    const View words = vstack({.alignment = HorizontalAlignment::leading, .spacing = 0},
                              {text(title).font(system(11).bold()), text("09:00").font(system(10))});
    const View content = hstack({}, {words, spacer(), std::move(aside)}).padding(Insets::all(6));
    const View ground = rectangle(3).foreground(palette.green.withAlpha(0.3));
    return link(url("heedbanner://preview/" + id), content.background(ground)).accessibilityLabel(title);
}

View camera(const ViewContext& context, const std::string& id) {
    const View sign = symbol("video.fill").foreground(context.palette().green);
    const View button =
        sign.padding(Insets::symmetric(8, 3)).background(capsule().foreground(context.palette().gray));
    return link(url("heedbanner://joinCall/" + id), button).accessibilityLabel("Join call");
}

class Program {
  public:
    Program(DesktopSession& session, WidgetDesk& desk, Date timerTarget)
        : session_(session), desk_(desk), timerTarget_(timerTarget) {}

    void add(const std::string& description) {
        std::istringstream words(description);
        std::string family, corner, output;
        words >> family >> corner >> output;
        WidgetPlacement placement;
        placement.corner = cornerNamed(corner).value_or(Corner::topEnd);
        placement.output = output;
        if (Point position; words >> position.x >> position.y) placement.position = position;
        const std::size_t index = widgets_.size();
        WidgetActions actions{
            .open = [](const Url& target) { say("opened " + target.absoluteString()); },
            .changeFamily =
                [this, index](WidgetFamily wanted) {
                    say("family " + std::string(nameOf(wanted)));
                    widgets_[index]->setFamily(wanted);
                },
            .move =
                [this, index](const WidgetPlacement& wanted) {
                    say("moved " + std::string(nameOf(wanted.corner)) + " " + wanted.output +
                        (wanted.position ? " " + std::to_string(int(wanted.position->x)) + "," +
                                               std::to_string(int(wanted.position->y))
                                         : ""));
                    widgets_[index]->setPlacement(wanted);
                },
            .remove =
                [this, index] {
                    say("removed");
                    widgets_[index].reset();
                },
            .openGallery = [] { say("gallery wanted"); },
            .targetItems =
                [](const Url& target) {
                    const auto report = [target] { say("item " + target.absoluteString()); };
                    return std::vector<MenuItem>{{.label = "Details", .chosen = report}};
                },
            .programItems =
                [] {
                    const auto report = [] { say("toggled"); };
                    return std::vector<MenuItem>{
                        {.kind = MenuItem::Kind::submenu,
                         .label = "Settings",
                         .submenu = {{.kind = MenuItem::Kind::toggle, .label = "Travel", .chosen = report}}}};
                }};
        widgets_.push_back(desk_.add(identity(), widgetFamily(family).value_or(WidgetFamily::systemMedium),
                                     placement, std::move(actions)));
        widgets_.back()->setContent(content());
    }

    /// False: to end.
    bool obey(const std::string& line) {
        const auto blank = line.find(' ');
        const std::string order = line.substr(0, blank);
        const std::string rest = blank == std::string::npos ? "" : line.substr(blank + 1);
        if (order == "add") add(rest);
        if (order == "remove" && !widgets_.empty()) widgets_.pop_back();
        if (order == "lift") desk_.lift();
        if (order == "lower") desk_.lower();
        if (order == "badge") widgets_.front()->setBadge(rest);
        if (order == "outputs") sayOutputs();
        if (order == "draws") say("views made " + std::to_string(viewsMade_));
        if (order == "gallery") showGallery();
        if (order == "card") showCard({.isByItself = rest == "by itself", .keyDelay = 1});
        if (order == "title") {
            title_ = rest;
            widgets_.front()->invalidate();
        }
        if (order == "quit") return false;
        say("done " + line);
        return true;
    }

    void sayKind() const {
        constexpr const char* names[] = {"layer-shell", "x11", "plain"};
        say(std::string("surfaces ") + names[static_cast<int>(session_.capabilities().surfaceKind)]);
        const std::string limitation = session_.capabilities().limitation();
        if (!limitation.empty()) say("limitation " + limitation);
    }

  private:
    static WidgetIdentity identity() {
        return {"test.rows",
                "Upcoming events",
                {{WidgetFamily::systemSmall, "Small"},
                 {WidgetFamily::systemMedium, "Medium"},
                 {WidgetFamily::systemLarge, "Large"}}};
    }

    WidgetContent content() {
        return [this](const ViewContext& context) {
            ++viewsMade_;
            const View clock = timer(timerTarget_).font(system(12).monospacedDigits());
            return vstack({.alignment = HorizontalAlignment::leading},
                          {row(context, title_, "standup", camera(context, "standup")),
                           row(context, "Lunch", "lunch", clock)});
        };
    }

    void sayOutputs() const {
        for (const Output& output : session_.outputs().all())
            say("output " + output.name + " " + std::to_string(output.geometry.width) + "x" +
                std::to_string(output.geometry.height) + " scale " + std::to_string(output.scale));
    }

    void showGallery() {
        gallery_ = GalleryWindow::show(session_, desk_, {.introduction = "Choose what to keep in sight."},
                                       {{identity(), "The next events, as many as fit.", content()}},
                                       {.add =
                                            [this](const std::string& kind, WidgetFamily family) {
                                                say("added " + kind + " " + std::string(nameOf(family)));
                                                gallery_->setPlaced({{kind, family}});
                                            },
                                        .remove =
                                            [this](const std::string& kind, WidgetFamily family) {
                                                say("taken away " + kind + " " + std::string(nameOf(family)));
                                                gallery_->setPlaced({});
                                            },
                                        .closed =
                                            [this] {
                                                say("gallery closed");
                                                gallery_.reset();
                                            }});
    }

    void showCard(CardArrival arrival) {
        Card card{
            .color = Color::hex(0x3584E4),
            .title = "Stand-up",
            .lines = {"Today, 09:00 to 09:30", "Work"},
            .place = "Room 4, https://maps.example/room4",
            .notes = "Agenda: https://example.org/agenda.\nBring <numbers> & questions.",
            .peopleHeading = "People",
            .people = {{"Ann Example", "Organizer", "AE", std::nullopt},
                       {"Bob Example", "Accepted", "BE", std::nullopt}},
            .primary = Card::Choice{"Join", [] { say("chose join"); }},
            .buttons = {{"Show in calendar", [] { say("chose calendar"); }}},
            .menuLabel = "Snooze",
            .menu = {{"5 minutes", [] { say("chose 5"); }}, {"Until it begins", [] { say("chose start"); }}},
            .aside = Card::Choice{"Leave out", [] { say("chose leave out"); }}};
        card_ = CardWindow::show(session_, std::move(card),
                                 {.open = [](const Url& target) { say("opened " + target.absoluteString()); },
                                  .closed =
                                      [this] {
                                          say("card closed");
                                          card_.reset();
                                      }},
                                 arrival);
    }

    DesktopSession& session_;
    WidgetDesk& desk_;
    Date timerTarget_;
    std::string title_ = "Stand-up";
    int viewsMade_ = 0;
    std::vector<std::unique_ptr<WidgetWindow>> widgets_;
    std::unique_ptr<GalleryWindow> gallery_;
    std::unique_ptr<CardWindow> card_;
};

/// Lines of standard input, as they come; ends with the input.
class Orders {
  public:
    Orders(Program& program, bool& isEnded) : program_(program), isEnded_(isEnded) {
        source_ = g_unix_fd_add(STDIN_FILENO, GIOCondition(G_IO_IN | G_IO_HUP), ready, this);
    }
    ~Orders() {
        if (!isEnded_) g_source_remove(source_);
    }
    Orders(const Orders&) = delete;
    Orders& operator=(const Orders&) = delete;

  private:
    static gboolean ready(int file, GIOCondition, gpointer data) {
        auto* self = static_cast<Orders*>(data);
        char bytes[512];
        const ssize_t count = read(file, bytes, sizeof bytes);
        self->isEnded_ = count <= 0;
        self->pending_.append(bytes, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        std::size_t end;
        while (!self->isEnded_ && (end = self->pending_.find('\n')) != std::string::npos) {
            const std::string line = self->pending_.substr(0, end);
            self->pending_.erase(0, end + 1);
            self->isEnded_ = !self->program_.obey(line);
        }
        return self->isEnded_ ? G_SOURCE_REMOVE : G_SOURCE_CONTINUE;
    }

    Program& program_;
    bool& isEnded_;
    std::string pending_;
    guint source_ = 0;
};

}  // namespace

/// Arguments: seconds to the moment that the timers count to, then widgets as "FAMILY CORNER OUTPUT X Y".
int main(int argc, char** argv) {
    const auto environment = Environment::fromProcess("heedbanner", programPath(argv[0]));
    auto opened = DesktopSession::open("desktop-test", false);
    if (!opened.session) {
        std::cerr << opened.failure << '\n';
        return 1;
    }
    const double wait = argc > 1 ? std::stod(argv[1]) : 3600;
    {
        const auto desk = WidgetDesk::make(
            *opened.session,
            {.environment = environment, .pictures = std::make_shared<const PictureLibrary>(environment)});
        Program program(*opened.session, *desk, environment->now().addingTimeInterval(wait));
        program.sayKind();
        for (int i = 2; i < argc; ++i)
            program.add(argv[i]);
        bool isEnded = false;
        const Orders orders(program, isEnded);
        say("ready");
        MainQueue::shared().runUntil([&] { return isEnded; });
    }
    say("ended");
    return 0;
}
