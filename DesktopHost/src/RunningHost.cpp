#include "RunningHost.h"

#include "AlertCenter.h"
#include "CalendarSetup.h"
#include "CardDeck.h"
#include "Handover.h"
#include "HostSignals.h"
#include "ListReloads.h"
#include "MainQueueCalls.h"
#include "ShownPlacements.h"
#include "SnoozeRequest.h"
#include "WidgetBoard.h"
#include "WidgetGallery.h"
#include "WidgetMenus.h"

#include <Desktop/DesktopSession.h>
#include <DesktopHost/AccountNotice.h>
#include <HbrCore/DeepLinks/DesktopApplication.h>
#include <HbrCore/Events/EventLookup.h>
#include <System/DeferredWrites.h>
#include <System/WakeSchedule.h>
#include <WidgetHost/WidgetScheduler.h>

#include <utility>

namespace hbr {

namespace {

constexpr const char* programName = "Heedbanner";
constexpr const char* desktopEntry = desktopApplication::identifier;

}  // namespace

struct RunningHost::Parts {
    World world;
    bool hasEnded = false;
    bool isService = false;
    /// Nobody wants anything on the desktop: the program goes with the last thing that is open or put off.
    bool endsWhenIdle = false;
    ShownPlacements placements;
    AccountNotice notice;
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
    std::unique_ptr<ListReloads> listReloads;
    std::unique_ptr<AlertCenter> alerts;

    /// Last, so that nothing new arrives while the rest is destroyed.
    std::unique_ptr<HostSignals> signals;
    MainQueueCalls calls;

    explicit Parts(World given)
        : world(std::move(given)), placements(world.placements, [this] { showPlacements(); }) {}
    ~Parts() { platform::WidgetCenter::install(nullptr); }

    bool isRightToLeft() const { return platform::isRightToLeftLanguage(world.bundle.language()); }
    void openDesktop();
    void makeScheduler();
    void makeAlerts();
    void makeSignals();

    void showPlacements();
    void playShownKinds();
    void didReload();
    void refreshNotice();
    void restartProgram();
    std::vector<platform::MenuItem> itemsOf(const platform::Url& target);
    void makeGallery();
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
    wakes = platform::WakeSchedule::onMainQueue(world.environment->clock);
    pictures = std::make_shared<const platform::PictureLibrary>(world.environment);
    desk = platform::WidgetDesk::make(*session, {.environment = world.environment,
                                                 .pictures = pictures,
                                                 .isRightToLeft = isRightToLeft(),
                                                 .texts = widgetMenuTexts(world.bundle),
                                                 .widgetScale = placements.contents().scale,
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
            .change = [this](const PlacementsFile::Change& change) { placements.change(change); },
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
    listReloads = std::make_unique<ListReloads>(world.core, *wakes);
}

void RunningHost::Parts::makeAlerts() {
    auto notifications = platform::DesktopNotifications::onSessionBus(
        programName, desktopEntry, [this](const std::string& tag, const std::string& reason) {
            world.environment->diagnostics->report({.text = reason});
            calls.later([this, tag] { alerts->presentOtherwise(tag); });
        });
    alerts = std::make_unique<AlertCenter>(
        world.core, std::move(notifications),
        AlertCenter::Actions{
            .event = cards->actions(),
            .preview = [this](const Event& event) { cards->preview(event); },
            .presentCard = [this](const Event& event) { cards->present(event); },
            .useActivationToken = [this](const std::string& token) { useActivationToken(token); },
            .choices = [this] { return placements.contents(); },
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

void RunningHost::Parts::makeSignals() {
    signals = std::make_unique<HostSignals>(
        *world.environment, world.core, placements.file().path(),
        HostSignals::Actions{.clockChanged =
                                 [this] {
                                     scheduler->clockChanged();
                                     alerts->clockChanged();
                                 },
                             .zoneOrFormatChanged = [this] { restartProgram(); },
                             .placementsChanged = [this] { placements.refresh(); },
                             .didReload = [this] { didReload(); },
                             .termination = [this] { hasEnded = true; }});
}

void RunningHost::Parts::showPlacements() {
    const auto& widgets = placements.contents().widgets;
    if (!widgets.empty()) endsWhenIdle = false;
    board->show(widgets);
    if (gallery) gallery->setPlaced(widgets);
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

void RunningHost::Parts::playShownKinds() {
    // Those of the gallery are all that there are.
    scheduler->setShownKinds(gallery ? gallery->kinds() : board->kinds());
}

void RunningHost::Parts::didReload() {
    listReloads->awaitNextChange();
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
    if (isService && placements.contents().widgets.empty() && !gallery) endsWhenIdle = true;
    endIfIdle();
}

void RunningHost::Parts::endIfIdle() {
    const bool isIdle = placements.contents().widgets.empty() && !gallery && !cards->isShowing() &&
                        !alerts->isShowing() && world.core.manager().snoozedInvocations().empty();
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

void RunningHost::Parts::restartProgram() {
    const auto kept = Handover::of(world.core.manager(), alerts->handledAndAnswered());
    // Nobody would be left to answer their buttons.
    alerts->withdrawAll();
    platform::DeferredWrites::finish();
    const std::string reason = hbr::restartProgram(world.argv, kept);
    world.environment->diagnostics->report({.severity = platform::Diagnostic::Severity::error,
                                            .text = "the time zone or the clock's format changed, but the "
                                                    "program could not restart: " +
                                                    reason});
}

void RunningHost::Parts::makeGallery() {
    gallery = std::make_unique<WidgetGallery>(
        *session, *desk, world.bundle, *HeedbannerWidgetBundle::demonstration(world.environment),
        world.catalogue, notice.title.has_value(),
        WidgetGallery::Actions{.change = [this](const auto& change) { placements.change(change); },
                               .closed =
                                   [this] {
                                       calls.later([this] {
                                           gallery.reset();
                                           playShownKinds();
                                           endsWhenIdle = placements.contents().widgets.empty();
                                           endIfIdle();
                                       });
                                   }});
    for (const std::string& kind : gallery->kinds()) {
        if (const auto entry = scheduler->currentEntry(kind)) gallery->setEntry(kind, *entry);
    }
    gallery->setPlaced(placements.contents().widgets);
    playShownKinds();
}

void RunningHost::Parts::showGallery() {
    if (gallery) return gallery->present();
    makeGallery();
}

RunningHost::RunningHost(World world) : parts_(std::make_unique<Parts>(std::move(world))) {}
RunningHost::~RunningHost() = default;

void RunningHost::start(const HostRequest& request) {
    Parts& parts = *parts_;
    parts.placements.load();
    parts.isService = request.isService;
    parts.openDesktop();
    parts.makeScheduler();
    parts.makeAlerts();
    parts.makeSignals();
    parts.refreshNotice();
    // Alerts are shown also while no widget is placed. Before the widgets, which share this reload.
    parts.world.core.manager().reloadEvents(true, parts.calls.guarded([&parts] {
        if (const auto handover = std::exchange(parts.handover, std::nullopt)) {
            parts.world.core.manager().restoreSnoozedInvocations(handover->invocations(parts.world.core));
            parts.world.core.manager().reloadEvents(true);
            // The request was that of the program that restarted.
            parts.didHandleRequest();
        }
    }));
    parts.showPlacements();
    const bool isEmpty = parts.placements.contents().widgets.empty() && !request.isService;
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
    handleSnoozeRequest(parts_->world.core, *parts_->alerts, eventId, how);
    parts_->didHandleRequest();
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
    parts_->placements.refresh();
    if (parts_->placements.contents().widgets.empty()) parts_->showGallery();
}

void RunningHost::quit() {
    parts_->hasEnded = true;
}

bool RunningHost::hasEnded() const {
    return parts_->hasEnded;
}

}  // namespace hbr
