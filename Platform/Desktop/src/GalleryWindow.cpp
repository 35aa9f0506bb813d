#include <Desktop/GalleryWindow.h>

#include <algorithm>
#include <utility>

#include "ViewArea.h"
#include "WindowParts.h"

namespace platform {

namespace {

constexpr int galleryMargin = 24, gallerySpacing = 20;
/// Room beside the previews of a page: the window's frame, its texts and buttons, at the usual text size.
constexpr int roomBeside = 2 * galleryMargin + 40, roomAbove = 300;
/// Logical pixels per point of a preview; no larger than on the desktop, and to be read at the least.
constexpr double greatestScale = 1.25, leastScale = 0.9;

/// At which the previews of every page fit beside each other on a screen.
double fittingScale(const std::vector<GalleryItem>& items, const Output::Area& area, double textScale) {
    double fitting = greatestScale * textScale;
    for (const GalleryItem& item : items) {
        double width = 1, height = 1;
        for (const auto& family : item.identity.families) {
            width += sizeOf(family.family).width;
            height = std::max(height, sizeOf(family.family).height);
        }
        const double gaps = gallerySpacing * static_cast<double>(item.identity.families.size());
        fitting = std::min({fitting, (area.width - roomBeside - gaps) / width,
                            (area.height - roomAbove * textScale) / height});
    }
    return std::max(fitting, leastScale);
}

class GtkGalleryWindow final : public GalleryWindow {
  public:
    GtkGalleryWindow(DesktopSession& session, const WidgetDesk& desk, GalleryTexts texts,
                     std::vector<GalleryItem> items, Actions actions)
        : session_(session),
          desk_(desk),
          texts_(std::move(texts)),
          items_(std::move(items)),
          actions_(std::move(actions)),
          window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)),
          lookToken_(session.appearance().observe([this] { fill(); })) {
        gtk_window_set_title(GTK_WINDOW(window_), texts_.title.c_str());
        onClose(window_, actions_.closed);
        fill();
        present();
    }
    ~GtkGalleryWindow() override { gtk_widget_destroy(window_); }

    void present() override { presentWindow(window_, session_); }
    void setIntroduction(const std::string& introduction) override {
        texts_.introduction = introduction;
        gtk_label_set_text(GTK_LABEL(introduction_), valid(introduction).c_str());
        gtk_widget_set_visible(introduction_, !introduction.empty());
    }
    void setPlaced(std::vector<GalleryChoice> placed) override {
        placed_ = std::move(placed);
        std::ranges::for_each(cells_, [this](const Cell& cell) { markPlaced(cell); });
    }
    void invalidate() override {
        for (const Cell& cell : cells_)
            refreshViewArea(cell.preview);
    }

  private:
    /// A family of a widget.
    struct Cell {
        GalleryChoice choice;
        GtkWidget* preview = nullptr;
        GtkWidget* mark = nullptr;
        GtkWidget* add = nullptr;
        GtkWidget* remove = nullptr;
    };

    void fill() {
        const std::string page = stack_ ? gtk_stack_get_visible_child_name(GTK_STACK(stack_)) : "";
        cells_.clear();
        if (GtkWidget* old = gtk_bin_get_child(GTK_BIN(window_))) gtk_widget_destroy(old);
        const auto output = session_.outputs().find({});
        const Output::Area area = output ? output->workArea : Output::Area{};

        GtkWidget* column = gtk_box_new(GTK_ORIENTATION_VERTICAL, gallerySpacing);
        gtk_container_set_border_width(GTK_CONTAINER(column), galleryMargin);
        introduction_ = makeLabel(texts_.introduction, TextRole::secondary);
        gtk_widget_set_no_show_all(introduction_, TRUE);
        gtk_widget_set_visible(introduction_, !texts_.introduction.empty());
        gtk_container_add(GTK_CONTAINER(column), introduction_);
        stack_ = gtk_stack_new();
        const double scale = fittingScale(items_, area, session_.appearance().current().textScale);
        for (const GalleryItem& item : items_) {
            GtkWidget* widget = makeItem(item, scale);
            gtk_widget_show_all(widget);
            gtk_stack_add_titled(GTK_STACK(stack_), widget, item.identity.kind.c_str(),
                                 item.identity.name.c_str());
        }
        if (items_.size() > 1) {
            GtkWidget* switcher = gtk_stack_switcher_new();
            gtk_stack_switcher_set_stack(GTK_STACK_SWITCHER(switcher), GTK_STACK(stack_));
            gtk_widget_set_halign(switcher, GTK_ALIGN_CENTER);
            gtk_container_add(GTK_CONTAINER(column), switcher);
        }
        gtk_container_add(GTK_CONTAINER(column), stack_);
        if (!page.empty()) gtk_stack_set_visible_child_name(GTK_STACK(stack_), page.c_str());

        // For texts that are much larger than usual.
        GtkWidget* scrolled = gtk_scrolled_window_new(nullptr, nullptr);
        gtk_scrolled_window_set_propagate_natural_width(GTK_SCROLLED_WINDOW(scrolled), TRUE);
        gtk_scrolled_window_set_propagate_natural_height(GTK_SCROLLED_WINDOW(scrolled), TRUE);
        if (output) {
            // Some of the screen stays free for the window's frame.
            gtk_scrolled_window_set_max_content_width(GTK_SCROLLED_WINDOW(scrolled), area.width - 40);
            gtk_scrolled_window_set_max_content_height(GTK_SCROLLED_WINDOW(scrolled), area.height - 60);
        }
        gtk_container_add(GTK_CONTAINER(scrolled), column);
        gtk_container_add(GTK_CONTAINER(window_), scrolled);
        gtk_widget_show_all(scrolled);
        std::ranges::for_each(cells_, [this](const Cell& cell) { markPlaced(cell); });
    }

    GtkWidget* makeItem(const GalleryItem& item, double scale) {
        GtkWidget* column = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
        // Otherwise the switcher names it.
        if (items_.size() == 1)
            gtk_container_add(GTK_CONTAINER(column), makeLabel(item.identity.name, TextRole::title));
        gtk_container_add(GTK_CONTAINER(column), makeLabel(item.description, TextRole::secondary));
        GtkWidget* row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, gallerySpacing);
        gtk_widget_set_margin_top(row, 6);
        for (const auto& family : item.identity.families)
            gtk_container_add(GTK_CONTAINER(row), makeFamily(item, family, scale));
        gtk_container_add(GTK_CONTAINER(column), row);
        return column;
    }

    GtkWidget* makeFamily(const GalleryItem& item, const WidgetIdentity::Family& family, double scale) {
        const auto layOutPreview = [this, preview = item.preview,
                                    family = family.family](double deviceScale) {
            ViewContext context = desk_.contextFor(family);
            context.scale = deviceScale;
            return layOutWidget(preview(context), context);
        };
        Cell cell{.choice = {item.identity.kind, family.family},
                  .preview = makeViewArea({sizeOf(family.family), scale, layOutPreview, desk_.wakes()}),
                  .mark = makeLabel(texts_.placed, TextRole::secondary),
                  .add = makeAction(texts_.add, item, family, actions_.add),
                  .remove = makeAction(texts_.remove, item, family, actions_.remove)};
        GtkWidget* line = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6);
        gtk_box_pack_start(GTK_BOX(line), makeLabel(family.name, TextRole::body), FALSE, FALSE, 0);
        gtk_box_pack_end(GTK_BOX(line), cell.add, FALSE, FALSE, 0);
        gtk_box_pack_end(GTK_BOX(line), cell.remove, FALSE, FALSE, 0);
        for (GtkWidget* changing : {cell.add, cell.remove})
            gtk_widget_set_no_show_all(changing, TRUE);

        GtkWidget* column = gtk_box_new(GTK_ORIENTATION_VERTICAL, 8);
        gtk_widget_set_valign(column, GTK_ALIGN_START);
        gtk_container_add(GTK_CONTAINER(column), cell.preview);
        gtk_container_add(GTK_CONTAINER(column), line);
        gtk_container_add(GTK_CONTAINER(column), cell.mark);
        cells_.push_back(std::move(cell));
        return column;
    }

    static GtkWidget* makeAction(const std::string& label, const GalleryItem& item,
                                 const WidgetIdentity::Family& family,
                                 const std::function<void(const std::string&, WidgetFamily)>& action) {
        GtkWidget* button = makeButton(label, [action, kind = item.identity.kind, family = family.family] {
            if (action) action(kind, family);
        });
        atk_object_set_name(gtk_widget_get_accessible(button),
                            (label + ": " + item.identity.name + ", " + family.name).c_str());
        return button;
    }

    void markPlaced(const Cell& cell) const {
        const bool isPlaced = std::ranges::find(placed_, cell.choice) != placed_.end();
        GtkWidget* before = isPlaced ? cell.add : cell.remove;
        GtkWidget* after = isPlaced ? cell.remove : cell.add;
        const bool hadFocus = gtk_widget_has_focus(before) != FALSE;
        gtk_widget_hide(before);
        gtk_widget_show(after);
        if (hadFocus) gtk_widget_grab_focus(after);
        // Its line stays, so that nothing moves.
        gtk_label_set_text(GTK_LABEL(cell.mark), isPlaced ? texts_.placed.c_str() : "");
    }

    DesktopSession& session_;
    const WidgetDesk& desk_;
    GalleryTexts texts_;
    std::vector<GalleryItem> items_;
    Actions actions_;
    GtkWidget* window_;
    GtkWidget* introduction_ = nullptr;
    GtkWidget* stack_ = nullptr;
    std::vector<Cell> cells_;
    std::vector<GalleryChoice> placed_;
    std::shared_ptr<void> lookToken_;
};

}  // namespace

std::unique_ptr<GalleryWindow> GalleryWindow::show(DesktopSession& session, const WidgetDesk& desk,
                                                   GalleryTexts texts, std::vector<GalleryItem> items,
                                                   Actions actions) {
    return std::make_unique<GtkGalleryWindow>(session, desk, std::move(texts), std::move(items),
                                              std::move(actions));
}

}  // namespace platform
