#include <Desktop/CardWindow.h>
#include <TimeAndText/ShortenedText.h>
#include <Views/PhotoDecoding.h>
#include <Views/View.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "ActionSignal.h"
#include "KeyGuard.h"
#include "RoundedRectangle.h"
#include "ViewArea.h"
#include "WindowParts.h"

namespace platform {

namespace {

constexpr int cardMargin = 20, cardSpacing = 12;
constexpr int cardWidth = 420;
/// Of notes and people together; more is scrolled.
constexpr int greatestBodyHeight = 360;
constexpr double portraitSize = 32;
constexpr std::size_t mostBytesOfTitle = 200, mostBytesOfLine = 1000;

GtkWidget* box(GtkOrientation orientation, int distance) {
    return gtk_box_new(orientation, distance);
}

void add(GtkWidget* container, GtkWidget* child) {
    gtk_container_add(GTK_CONTAINER(container), child);
}

GtkWidget* makeColorBar(Color color) {
    GtkWidget* bar = gtk_drawing_area_new();
    gtk_widget_set_size_request(bar, 4, -1);
    g_signal_connect_data(
        bar, "draw", G_CALLBACK(+[](GtkWidget* self, cairo_t* cairo, gpointer data) -> gboolean {
            const auto& shown = *static_cast<Color*>(data);
            cairo_set_source_rgba(cairo, shown.red, shown.green, shown.blue, shown.alpha);
            addRoundedRectangle(cairo,
                                {0, 0, static_cast<double>(gtk_widget_get_allocated_width(self)),
                                 static_cast<double>(gtk_widget_get_allocated_height(self))},
                                2);
            cairo_fill(cairo);
            return FALSE;
        }),
        new Color(color), [](gpointer data, GClosure*) { delete static_cast<Color*>(data); },
        GConnectFlags(0));
    return bar;
}

bool haveSameLabels(const std::vector<Card::Choice>& a, const std::vector<Card::Choice>& b) {
    return std::ranges::equal(a, b, {}, &Card::Choice::label, &Card::Choice::label);
}

bool haveSameLabel(const std::optional<Card::Choice>& a, const std::optional<Card::Choice>& b) {
    return a.has_value() == b.has_value() && (!a || a->label == b->label);
}

/// The parts are the same but for what the lines say.
bool differInLinesOnly(const Card& a, const Card& b) {
    return a.lines.size() == b.lines.size() && a.color == b.color && a.title == b.title &&
           a.place == b.place && a.notes == b.notes && a.peopleHeading == b.peopleHeading &&
           a.people == b.people && a.menuLabel == b.menuLabel && haveSameLabel(a.primary, b.primary) &&
           haveSameLabel(a.aside, b.aside) && haveSameLabels(a.buttons, b.buttons) &&
           haveSameLabels(a.menu, b.menu);
}

class GtkCardWindow final : public CardWindow {
  public:
    GtkCardWindow(DesktopSession& session, Card card, Actions actions, CardArrival arrival)
        : session_(session),
          card_(std::move(card)),
          actions_(std::move(actions)),
          window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)),
          lookToken_(session.appearance().observe([this] { fill(); })) {
        gtk_window_set_type_hint(GTK_WINDOW(window_), GDK_WINDOW_TYPE_HINT_DIALOG);
        gtk_window_set_resizable(GTK_WINDOW(window_), FALSE);
        if (arrival.isByItself) guard_ = std::make_unique<KeyGuard>(window_, arrival.keyDelay);
        onClose(window_, actions_.closed);
        fill();
        if (arrival.isByItself) {
            appear();
            return;
        }
        gtk_window_set_position(GTK_WINDOW(window_), GTK_WIN_POS_CENTER);
        moveToPointer(window_);
        present();
    }
    ~GtkCardWindow() override {
        guard_.reset();
        gtk_widget_destroy(window_);
    }

    void setCard(Card card) override {
        const Card old = std::exchange(card_, std::move(card));
        if (!differInLinesOnly(old, card_)) return fill();
        for (std::size_t i = 0; i < lines_.size(); ++i)
            gtk_label_set_text(GTK_LABEL(lines_[i]),
                               valid(shortened(card_.lines[i], mostBytesOfLine)).c_str());
    }
    void present() override {
        if (guard_) {
            guard_.reset();
            gtk_window_set_keep_above(GTK_WINDOW(window_), FALSE);
            fill();
        }
        presentWindow(window_, session_);
    }

  private:
    /// Where it is seen, and without the keyboard.
    void appear() {
        gtk_window_set_position(GTK_WINDOW(window_), GTK_WIN_POS_CENTER);
        gtk_window_set_focus_on_map(GTK_WINDOW(window_), FALSE);
        gtk_window_set_keep_above(GTK_WINDOW(window_), TRUE);
        gtk_window_set_urgency_hint(GTK_WINDOW(window_), TRUE);
        gtk_widget_show(window_);
        // The toolkit gives the first button the focus, where a desktop hands the window the keyboard anyhow.
        gtk_window_set_focus(GTK_WINDOW(window_), nullptr);
    }

    void fill() {
        gtk_window_set_title(GTK_WINDOW(window_), shortened(card_.title, mostBytesOfTitle).c_str());
        if (GtkWidget* old = gtk_bin_get_child(GTK_BIN(window_))) gtk_widget_destroy(old);
        GtkWidget* column = box(GTK_ORIENTATION_VERTICAL, cardSpacing + 4);
        gtk_container_set_border_width(GTK_CONTAINER(column), cardMargin);
        gtk_widget_set_size_request(column, cardWidth, -1);
        add(column, makeHead());
        if (!card_.place.empty()) add(column, makeLinkedLabel(card_.place, actions_.open));
        if (!card_.notes.empty() || !card_.people.empty()) add(column, makeBody());
        add(column, makeButtons());
        if (card_.aside) {
            add(column, gtk_separator_new(GTK_ORIENTATION_HORIZONTAL));
            add(column, makeAside());
        }
        add(window_, column);
        gtk_widget_show_all(column);
        if (guard_) return;
        if (primary_) {
            gtk_widget_set_can_default(primary_, TRUE);
            gtk_widget_grab_default(primary_);
            gtk_widget_grab_focus(primary_);
        } else if (firstButton_) {
            // Not a text with links, all of which would be selected.
            gtk_widget_grab_focus(firstButton_);
        }
    }

    GtkWidget* makeHead() {
        GtkWidget* head = box(GTK_ORIENTATION_HORIZONTAL, cardSpacing);
        if (card_.color) add(head, makeColorBar(*card_.color));
        GtkWidget* texts = box(GTK_ORIENTATION_VERTICAL, 4);
        add(texts, makeLabel(card_.title, TextRole::title));
        lines_.clear();
        for (const std::string& line : card_.lines) {
            lines_.push_back(makeLabel(line, TextRole::body));
            add(texts, lines_.back());
        }
        add(head, texts);
        return head;
    }

    GtkWidget* makeBody() const {
        GtkWidget* body = box(GTK_ORIENTATION_VERTICAL, cardSpacing);
        if (!card_.notes.empty()) add(body, makeLinkedLabel(card_.notes, actions_.open));
        if (!card_.people.empty()) {
            add(body, makeLabel(card_.peopleHeading, TextRole::heading));
            for (const Card::Person& person : card_.people)
                add(body, makePerson(person));
        }
        // A scrolled area is never lower than its scrollbar, which leaves a gap below a short text.
        gtk_widget_show_all(body);
        int height = 0;
        gtk_widget_get_preferred_height_for_width(body, cardWidth - 2 * cardMargin, nullptr, &height);
        if (height <= greatestBodyHeight) return body;
        GtkWidget* scrolled = gtk_scrolled_window_new(nullptr, nullptr);
        gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scrolled), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
        gtk_scrolled_window_set_propagate_natural_height(GTK_SCROLLED_WINDOW(scrolled), TRUE);
        gtk_scrolled_window_set_max_content_height(GTK_SCROLLED_WINDOW(scrolled), greatestBodyHeight);
        add(scrolled, body);
        return scrolled;
    }

    GtkWidget* makePerson(const Card::Person& person) const {
        GtkWidget* row = box(GTK_ORIENTATION_HORIZONTAL, cardSpacing);
        if (person.picture || !person.initials.empty()) add(row, makePortrait(person));
        GtkWidget* texts = box(GTK_ORIENTATION_VERTICAL, 0);
        gtk_widget_set_valign(texts, GTK_ALIGN_CENTER);
        add(texts, makeLabel(person.name, TextRole::body));
        if (!person.remark.empty()) add(texts, makeLabel(person.remark, TextRole::secondary));
        add(row, texts);
        return row;
    }

    /// The initials until the picture is decoded.
    GtkWidget* makePortrait(const Card::Person& person) const {
        struct Decoding {
            GtkWidget* area = nullptr;
            std::shared_ptr<void> token;
        };
        const auto decoding = std::make_shared<Decoding>();
        const auto isReady = [decoding](const ImageBytes& picture, double deviceScale) {
            const auto pixels = static_cast<int>(std::lround(portraitSize * deviceScale));
            if (isPhotoDecoded(picture, pixels, pixels)) return true;
            decoding->token = decodePhoto(picture, pixels, pixels, [decoding = std::weak_ptr(decoding)] {
                if (const auto shown = decoding.lock()) refreshViewArea(shown->area);
            });
            return false;
        };
        const auto layOutPortrait = [person, isReady,
                                     look = session_.appearance().current()](double deviceScale) {
            ViewContext context;
            context.appearance = look.appearance;
            context.contrast = look.contrast;
            context.scale = deviceScale;
            const Palette& palette = context.palette();
            const View initials = text(person.initials).font(system(12).bold()).foreground(palette.primary);
            View portrait = zstack({}, {capsule().foreground(palette.gray), initials});
            if (person.picture && isReady(*person.picture, deviceScale))
                portrait = zstack({}, {portrait, photo(*person.picture, portraitSize / 2)});
            return layOut(portrait.filling(), {portraitSize, portraitSize}, context);
        };
        GtkWidget* area = makeViewArea(
            {{portraitSize, portraitSize}, session_.appearance().current().textScale, layOutPortrait});
        decoding->area = area;
        gtk_widget_set_valign(area, GTK_ALIGN_CENTER);
        return area;
    }

    /// Does what the card then offers after it is closed, which may have destroyed it.
    template <class Offered>
    std::function<void()> closing(Offered offered) const {
        return [this, offered] {
            const Card::Choice choice = offered(card_);
            const auto closed = actions_.closed;
            if (closed && !choice.keepsOpen) closed();
            if (choice.chosen) choice.chosen();
        };
    }

    GtkWidget* makeButtons() {
        GtkWidget* row = box(GTK_ORIENTATION_HORIZONTAL, 8);
        primary_ = firstButton_ = nullptr;
        if (card_.primary) {
            primary_ =
                makeButton(card_.primary->label, closing([](const Card& card) { return *card.primary; }));
            gtk_style_context_add_class(gtk_widget_get_style_context(primary_),
                                        GTK_STYLE_CLASS_SUGGESTED_ACTION);
            gtk_box_pack_end(GTK_BOX(row), primary_, FALSE, FALSE, 0);
        }
        if (!card_.menu.empty()) gtk_box_pack_end(GTK_BOX(row), makeMenuButton(), FALSE, FALSE, 0);
        for (std::size_t i = card_.buttons.size(); i-- > 0;) {
            GtkWidget* button = makeButton(card_.buttons[i].label,
                                           closing([i](const Card& card) { return card.buttons[i]; }));
            gtk_box_pack_end(GTK_BOX(row), button, FALSE, FALSE, 0);
            firstButton_ = button;
        }
        return row;
    }

    GtkWidget* makeAside() const {
        GtkWidget* button =
            makeButton(card_.aside->label, closing([](const Card& card) { return *card.aside; }));
        gtk_button_set_relief(GTK_BUTTON(button), GTK_RELIEF_NONE);
        gtk_widget_set_halign(button, GTK_ALIGN_START);
        return button;
    }

    GtkWidget* makeMenuButton() const {
        GtkWidget* menu = gtk_menu_new();
        for (std::size_t i = 0; i < card_.menu.size(); ++i) {
            GtkWidget* item = gtk_menu_item_new_with_label(card_.menu[i].label.c_str());
            onSignal(item, "activate", closing([i](const Card& card) { return card.menu[i]; }));
            gtk_menu_shell_append(GTK_MENU_SHELL(menu), item);
        }
        gtk_widget_show_all(menu);
        GtkWidget* button = gtk_menu_button_new();
        gtk_menu_button_set_popup(GTK_MENU_BUTTON(button), menu);
        GtkWidget* content = box(GTK_ORIENTATION_HORIZONTAL, 6);
        add(content, gtk_label_new(card_.menuLabel.c_str()));
        add(content, gtk_image_new_from_icon_name("pan-down-symbolic", GTK_ICON_SIZE_BUTTON));
        add(button, content);
        atk_object_set_name(gtk_widget_get_accessible(button), card_.menuLabel.c_str());
        return button;
    }

    DesktopSession& session_;
    Card card_;
    Actions actions_;
    GtkWidget* window_;
    /// Of the card's head, in its order.
    std::vector<GtkWidget*> lines_;
    GtkWidget* primary_ = nullptr;
    GtkWidget* firstButton_ = nullptr;
    std::shared_ptr<void> lookToken_;
    /// While nobody asked for the card.
    std::unique_ptr<KeyGuard> guard_;
};

}  // namespace

std::unique_ptr<CardWindow> CardWindow::show(DesktopSession& session, Card card, Actions actions,
                                             CardArrival arrival) {
    return std::make_unique<GtkCardWindow>(session, std::move(card), std::move(actions), arrival);
}

}  // namespace platform
