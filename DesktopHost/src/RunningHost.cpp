#include "RunningHost.h"

#include <DesktopHost/AccountNotice.h>
#include "AlertCenter.h"
#include "CalendarSetup.h"
#include "CardDeck.h"
#include "Handover.h"
#include "WidgetBoard.h"
#include "WidgetGallery.h"
#include "WidgetMenus.h"

#include <Desktop/DesktopSession.h>
#include <HbrCore/DeepLinks/DesktopApplication.h>
#include <HbrCore/Events/EventLookup.h>
#include <HbrCore/Scheduling/ListChanges.h>
#include <HbrUtils/DateOperations.h>
#include <MxLogger/MxLogger.h>
#include <System/ClockChange.h>
#include <System/DeferredWrites.h>
#include <System/DesktopClock.h>
#include <System/FileWatcher.h>
#include <System/MainQueue.h>
#include <System/TerminationRequest.h>
#include <System/WakeSchedule.h>
#include <System/ZoneChange.h>
#include <WidgetHost/WidgetScheduler.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

namespace hbr {

namespace {

constexpr const char* programName = "Heedbanner";
constexpr const char* desktopEntry = desktopApplication::identifier;
/// A burst of changes of the file of placements is over after this many seconds.
constexpr double placementsQuiet = 0.1;

}  // namespace

struct RunningHost::Parts {
    World world;
    bool hasEnded = false;
    bool isService = false;
    /// Nobody wants anything on the desktop: the program goes with the last thing that is open or put off.
    bool endsWhenIdle = false;
    PlacementsFile::Contents contents;
    AccountNotice notice;
    bool isRefreshPending = false;
    std::optional<Handover> handover = takeHandover();

    std::shared_ptr<platform::WakeSchedule> wakes;
    std::unique_ptr<platform::DesktopSession> session;
    std::shared_ptr<const platform::PictureLibrary> pictures;
    std::unique_ptr<platform::WidgetDesk> desk;
    std::unique_ptr<WidgetBoard> board;
    std::unique_ptr<CardDeck> cards;
    std::unique_ptr<CalendarSetup> setup;
    std::unique_ptr<WidgetGallery> gallery;
    std::shared_ptr<platform::WidgetScheduler> scheduler;
    std::unique_ptr<platform::WakeSchedule::Alarm> schedulerAlarm;
    /// When an event enters or leaves a list between two reloads of the manager.
    std::unique_ptr<platform::WakeSchedule::Alarm> listsAlarm;
    /// The manager's own timer leaves the first whole minute out.
    std::unique_ptr<platform::WakeSchedule::Alarm> firstMinute;
    std::unique_ptr<AlertCenter> alerts;

    std::unique_ptr<platform::ClockChange> clockChange;
    std::unique_ptr<platform::ClockFormatChange> clockFormatChange;
    std::unique_ptr<platform::ZoneChange> zoneChange;
    std::unique_ptr<platform::TerminationRequest> termination;
    std::shared_ptr<void> settingsWatch;
    std::unique_ptr<platform::FileWatcher> placementsWatch;
    platform::NotificationCenter::Observation reloads;
    std::shared_ptr<bool> isAlive = std::make_shared<bool>(true);

    explicit Parts(World given) : world(std::move(given)) {}
    ~Parts() {
        platform::WidgetCenter::install(nullptr);
        // Threads first, so that nothing new arrives.
        placementsWatch.reset();
        settingsWatch.reset();
        zoneChange.reset();
    }

    /// On the main queue, unless this is gone by then.
    void later(std::function<void()> work) {
        platform::MainQueue::shared().async([alive = std::weak_ptr(isAlive), work = std::move(work)] {
            if (alive.lock()) work();
        });
    }

    bool isRightToLeft() const { return platform::isRightToLeftLanguage(world.bundle.language()); }
    void openDesktop();
    void makeScheduler();
    void makeAlerts();
    void watchWorld();

    void showPlacements();
    void playShownKinds();
    void placementsChanged();
    void changePlacements(const PlacementsFile::Change& change);
    void didReload();
    void awaitChangeOfLists();
    void refreshNotice();
    void executeAnew();
    std::vector<platform::MenuItem> itemsOf(const platform::Url& target);
    std::vector<platform::GalleryChoice> placedInGallery() const;
    void showGallery();
    void useActivationToken(const std::string& token);
    void didHandleRequest();
    void endIfIdle();
};

void RunningHost::Parts::openDesktop() {
    auto opened = platform::DesktopSession::open(desktopEntry, isRightToLeft());
    if (!opened.session) throw HostFailure(ExitStatus::failed, opened.failure);
    session = std::move(opened.session);
    if (const std::string limitation = session->capabilities().limitation(); !limitation.empty()) {
        world.environment->diagnostics->report({.text = limitation});
    }
    const auto text = [this](const char* key) {
        return world.bundle.localizedText(std::string("Widget.desktop.menu.") + key);
    };
    wakes = platform::WakeSchedule::onMainQueue(world.environment->clock);
    pictures = std::make_shared<const platform::PictureLibrary>(world.environment);
    desk = platform::WidgetDesk::make(*session, {.environment = world.environment,
                                                 .pictures = pictures,
                                                 .isRightToLeft = isRightToLeft(),
                                                 .texts = {.size = text("size"),
                                                           .moveTo = text("moveTo"),
                                                           .topStart = text("topStart"),
                                                           .topEnd = text("topEnd"),
                                                           .bottomStart = text("bottomStart"),
                                                           .bottomEnd = text("bottomEnd"),
                                                           .screen = text("screen"),
                                                           .openGallery = text("openGallery"),
                                                           .remove = text("remove"),
                                                           .cannotPlace = text("cannotPlace")},
                                                 .widgetScale = contents.scale,
                                                 .wakes = wakes});
    cards = std::make_unique<CardDeck>(world.core, world.bundle, *session, wakes);
    setup = std::make_unique<CalendarSetup>(*world.core.environment(), world.bundle, *session, *cards);
    board = std::make_unique<WidgetBoard>(
        *desk, world.bundle, world.catalogue,
        WidgetBoard::Actions{
            .open =
                [this](const platform::Url& url) {
                    if (url.absoluteString() == accountsUrl) {
                        setup->show(notice);
                    } else {
                        cards->open(url);
                    }
                },
            .openGallery = [this] { showGallery(); },
            .change = [this](const PlacementsFile::Change& change) { changePlacements(change); },
            .targetItems = [this](const platform::Url& url) { return itemsOf(url); },
            .programItems =
                [this] { return programMenu(world.bundle, world.core, [this] { hasEnded = true; }); }});
}

void RunningHost::Parts::makeScheduler() {
    schedulerAlarm = wakes->add([this] { scheduler->wake(); });
    scheduler = platform::WidgetScheduler::make(
        world.bundle.body(),
        {.clock = world.environment->clock,
         .wakeAt = [this](std::optional<platform::Date> date) { schedulerAlarm->set(date); },
         .show =
             [this](const std::string& kind, const platform::WidgetEntry& entry) {
                 board->setEntry(kind, entry);
                 if (gallery) gallery->setEntry(kind, entry);
             }});
    platform::WidgetCenter::install(scheduler);
    const auto reload = [this] { world.core.manager().reloadEvents(true); };
    listsAlarm = wakes->add(reload);
    firstMinute = wakes->add(reload);
    const platform::Environment& environment = *world.environment;
    firstMinute->set(
        removingSeconds(environment.calendar.addingMinutes(environment.now(), 1), environment.calendar));
}

void RunningHost::Parts::makeAlerts() {
    auto notifications = platform::DesktopNotifications::onSessionBus(
        programName, desktopEntry, [this](const std::string& tag, const std::string& reason) {
            world.environment->diagnostics->report({.text = reason});
            later([this, tag] { alerts->presentOtherwise(tag); });
        });
    alerts = std::make_unique<AlertCenter>(
        world.core, std::move(notifications),
        AlertCenter::Actions{
            .event = cards->actions(),
            .preview = [this](const Event& event) { cards->preview(event); },
            .presentCard = [this](const Event& event) { cards->present(event); },
            .useActivationToken = [this](const std::string& token) { useActivationToken(token); },
            .choices = [this] { return contents; },
            .titleOfRest =
                [this](std::size_t count) {
                    return CardTexts(world.core, world.bundle).text("otherAlerts", {std::to_string(count)});
                },
            .presentMessage =
                [this](const std::string& title, const std::string& text) {
                    cards->present("alerts", messageCard(*world.core.environment(), title, text));
                },
            .didRefresh = [this] { endIfIdle(); }});
    cards->setAnswered([this](const Event& event) { alerts->withdraw(event); });
    cards->setClosed([this] { endIfIdle(); });
    if (handover) alerts->restoreHandled(handover->handled);
}

void RunningHost::Parts::watchWorld() {
    clockChange = std::make_unique<platform::ClockChange>([this] {
        scheduler->clockChanged();
        alerts->clockChanged();
    });
    zoneChange = std::make_unique<platform::ZoneChange>(*world.environment, [this] { executeAnew(); });
    clockFormatChange = std::make_unique<platform::ClockFormatChange>([this] { executeAnew(); });
    termination = std::make_unique<platform::TerminationRequest>([this] { hasEnded = true; });
    settingsWatch = reloadAfterSettingsChange(world.core);
    placementsWatch = std::make_unique<platform::FileWatcher>(
        std::vector{world.placements.path()}, [this](const auto&) { later([this] { placementsChanged(); }); },
        placementsQuiet, world.environment->diagnostics);
    reloads =
        world.core.center().observe(didReloadEventsNotification, [this] { later([this] { didReload(); }); });
}

void RunningHost::Parts::showPlacements() {
    if (!contents.widgets.empty()) endsWhenIdle = false;
    board->show(contents.widgets);
    if (gallery) gallery->setPlaced(placedInGallery());
    playShownKinds();
}

std::vector<platform::MenuItem> RunningHost::Parts::itemsOf(const platform::Url& target) {
    const auto link = DeepLinkBuilder().make(target);
    const auto event = link ? eventWithIdentifier(world.core, link->eventIdentifier()) : std::nullopt;
    if (!event) return {};
    return eventMenu(world.bundle,
                     eventCard(world.core, CardTexts(world.core, world.bundle), *event, cards->actions()),
                     [this, event = *event] { cards->preview(event); });
}

std::vector<platform::GalleryChoice> RunningHost::Parts::placedInGallery() const {
    std::vector<platform::GalleryChoice> placed;
    for (const PlacedWidget& one : contents.widgets) {
        if (const auto* widget = world.catalogue.find(one.name))
            placed.push_back({widget->configuration.kind(), one.family});
    }
    return placed;
}

void RunningHost::Parts::playShownKinds() {
    // Those of the gallery are all that there are.
    scheduler->setShownKinds(gallery ? gallery->kinds() : board->kinds());
}

void RunningHost::Parts::placementsChanged() {
    auto changed = world.placements.load();
    // Half written by an editor, or with a slip: the widgets stay until it can be read.
    if (changed.isBroken) return;
    contents = std::move(changed);
    showPlacements();
}

void RunningHost::Parts::changePlacements(const PlacementsFile::Change& change) {
    world.placements.update(change);
    // Not inside a window's own call, which may be the one to go.
    if (std::exchange(isRefreshPending, true)) return;
    later([this] {
        isRefreshPending = false;
        placementsChanged();
    });
}

void RunningHost::Parts::awaitChangeOfLists() {
    const auto lists = world.core.manager().lists();
    listsAlarm->set(nextChangeWithinAMinute(lists->upcoming(), lists->underWay(), world.environment->now()));
}

void RunningHost::Parts::didReload() {
    awaitChangeOfLists();
    refreshNotice();
    alerts->didReload();
    cards->refresh();
    endIfIdle();
}

void RunningHost::Parts::useActivationToken(const std::string& token) {
    // A window of our own or another program: whichever opens first.
    session->useActivationToken(token);
    platform::Workspace::shared()->useActivationToken(token);
}

void RunningHost::Parts::didHandleRequest() {
    if (isService && contents.widgets.empty() && !gallery) endsWhenIdle = true;
    endIfIdle();
}

void RunningHost::Parts::endIfIdle() {
    const bool isIdle = contents.widgets.empty() && !gallery && !cards->isShowing() && !alerts->isShowing() &&
                        world.core.manager().snoozedInvocations().empty();
    if (endsWhenIdle && isIdle) hasEnded = true;
}

void RunningHost::Parts::refreshNotice() {
    AccountNotice current = AccountNotice::of(world.core, world.bundle);
    if (world.core.settings().debugScreenshotMode()) current = {};
    if (current == notice) return;
    notice = std::move(current);
    board->setNotice(notice.title ? std::optional(noticeContent(notice)) : std::nullopt);
    board->setBadge(notice.badge);
    if (gallery) gallery->setDemonstration(notice.title.has_value());
}

void RunningHost::Parts::executeAnew() {
    const auto kept = Handover::of(world.core.manager(), alerts->handledAndAnswered());
    // Nobody would be left to answer their buttons.
    alerts->withdrawAll();
    platform::DeferredWrites::finish();
    const std::string reason = hbr::executeAnew(world.argv, kept);
    world.environment->diagnostics->report({.severity = platform::Diagnostic::Severity::error,
                                            .text = "the time zone or the clock's format changed, but the "
                                                    "program could not restart: " +
                                                    reason});
}

void RunningHost::Parts::showGallery() {
    if (gallery) return gallery->present();
    gallery = std::make_unique<WidgetGallery>(
        *session, *desk, world.bundle, *HeedbannerWidgetBundle::demonstration(world.environment),
        notice.title.has_value(),
        platform::GalleryWindow::Actions{
            .add =
                [this](const std::string& kind, platform::WidgetFamily family) {
                    const auto* widget = world.catalogue.find(kind);
                    if (!widget) return;
                    changePlacements([name = widget->name, family](std::vector<PlacedWidget>& widgets) {
                        widgets.push_back(placedWidget(name, family, platform::Corner::topEnd, "", widgets));
                    });
                },
            .remove =
                [this](const std::string& kind, platform::WidgetFamily family) {
                    const auto* widget = world.catalogue.find(kind);
                    if (!widget) return;
                    changePlacements([name = widget->name, family](std::vector<PlacedWidget>& widgets) {
                        // The one that was added last.
                        const auto found = std::ranges::find_if(
                            widgets.rbegin(), widgets.rend(), [&](const PlacedWidget& one) {
                                return one.name == name && one.family == family;
                            });
                        if (found != widgets.rend()) widgets.erase(std::next(found).base());
                    });
                },
            .closed =
                [this] {
                    later([this] {
                        gallery.reset();
                        playShownKinds();
                        endsWhenIdle = contents.widgets.empty();
                        endIfIdle();
                    });
                }});
    for (const std::string& kind : gallery->kinds()) {
        if (const auto entry = scheduler->currentEntry(kind)) gallery->setEntry(kind, *entry);
    }
    gallery->setPlaced(placedInGallery());
    playShownKinds();
}

RunningHost::RunningHost(World world) : parts_(std::make_unique<Parts>(std::move(world))) {}
RunningHost::~RunningHost() = default;

void RunningHost::start(const HostRequest& request) {
    Parts& parts = *parts_;
    parts.contents = parts.world.placements.load();
    parts.isService = request.isService;
    parts.openDesktop();
    parts.makeScheduler();
    parts.makeAlerts();
    parts.watchWorld();
    parts.refreshNotice();
    // Alerts count also while no widget is placed. Before the widgets, which share this reload.
    parts.world.core.manager().reloadEvents(true, [&parts, alive = std::weak_ptr(parts.isAlive)] {
        if (!alive.lock()) return;
        if (const auto handover = std::exchange(parts.handover, std::nullopt)) {
            parts.world.core.manager().restoreSnoozedInvocations(handover->invocations(parts.world.core));
            parts.world.core.manager().reloadEvents(true);
            // The request was that of the program that was executed anew.
            parts.didHandleRequest();
        }
    });
    parts.showPlacements();
    const bool isEmpty = parts.contents.widgets.empty() && !request.isService;
    if (request.task == HostRequest::Task::gallery || isEmpty) parts.showGallery();
    if (request.task == HostRequest::Task::focus) focus(request.focused);
}

void RunningHost::useActivationToken(const std::string& token) {
    // The first request may be heard while the desktop is being opened.
    if (parts_->session) parts_->useActivationToken(token);
}

void RunningHost::openUrl(const std::string& url) {
    if (const auto parsed = platform::Url::parse(url)) parts_->cards->open(*parsed);
    parts_->didHandleRequest();
}

void RunningHost::snooze(const std::string& eventId, const std::string& how) {
    putOff(eventId, how);
    parts_->didHandleRequest();
}

void RunningHost::putOff(const std::string& eventId, const std::string& how) {
    auto event = eventWithIdentifier(parts_->world.core, eventId);
    if (!event) {
        // Its file may have been written a moment ago.
        parts_->world.core.aggregatedEventStore().refreshData();
        event = eventWithIdentifier(parts_->world.core, eventId);
    }
    if (!event) {
        parts_->world.environment->diagnostics->report(
            {.text = "snooze: no event has the identifier \"" + eventId + "\""});
        return;
    }
    auto& manager = parts_->world.core.manager();
    if (how == desktopApplication::clear) {
        manager.removeSnooze(*event);
        return manager.reloadEvents(true);
    }
    parts_->alerts->withdraw(*event);
    if (how == desktopApplication::untilStart) return manager.snoozeUntilTimeOfEvent(*event);
    std::int64_t minutes = 0;
    const auto end = std::from_chars(how.data(), how.data() + how.size(), minutes).ptr;
    if (end == how.data() + how.size() && minutes > 0) manager.snooze(*event, minutes);
}

void RunningHost::reload() {
    parts_->world.core.aggregatedEventStore().refreshData();
    parts_->world.core.manager().reloadEvents(true);
    parts_->didHandleRequest();
}

void RunningHost::focus(const std::string& widget) {
    parts_->board->lift(widget);
    parts_->didHandleRequest();
}

void RunningHost::showGallery() {
    parts_->showGallery();
}

void RunningHost::activate() {
    parts_->placementsChanged();
    if (parts_->contents.widgets.empty()) parts_->showGallery();
}

void RunningHost::quit() {
    parts_->hasEnded = true;
}

bool RunningHost::hasEnded() const {
    return parts_->hasEnded;
}

}  // namespace hbr
