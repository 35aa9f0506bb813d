#include <Desktop/GalleryWindow.h>

#include <algorithm>
#include <utility>

#include "ViewArea.h"
#include "WindowParts.h"

namespace platform {

namespace {

constexpr int windowMargin = 24, spacing = 20;
/// Logical pixels per point of a preview, before text scaling.
constexpr double previewScale = 0.9;

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
    void invalidate() override { std::ranges::for_each(previews_, refreshViewArea); }

  private:
    void fill() {
        previews_.clear();
        if (GtkWidget* old = gtk_bin_get_child(GTK_BIN(window_))) gtk_widget_destroy(old);
        GtkWidget* column = gtk_box_new(GTK_ORIENTATION_VERTICAL, spacing);
        gtk_container_set_border_width(GTK_CONTAINER(column), windowMargin);
        introduction_ = makeLabel(texts_.introduction, TextRole::secondary);
        gtk_widget_set_no_show_all(introduction_, TRUE);
        gtk_widget_set_visible(introduction_, !texts_.introduction.empty());
        gtk_container_add(GTK_CONTAINER(column), introduction_);
        for (const GalleryItem& item : items_)
            gtk_container_add(GTK_CONTAINER(column), makeItem(item));
        GtkWidget* scrolled = gtk_scrolled_window_new(nullptr, nullptr);
        gtk_scrolled_window_set_propagate_natural_width(GTK_SCROLLED_WINDOW(scrolled), TRUE);
        gtk_scrolled_window_set_propagate_natural_height(GTK_SCROLLED_WINDOW(scrolled), TRUE);
        const auto output = session_.outputs().find({});
        if (output) {
            // Some of the screen stays free for the window's frame.
            gtk_scrolled_window_set_max_content_width(GTK_SCROLLED_WINDOW(scrolled),
                                                      output->workArea.width * 9 / 10);
            gtk_scrolled_window_set_max_content_height(GTK_SCROLLED_WINDOW(scrolled),
                                                       output->workArea.height * 8 / 10);
        }
        gtk_container_add(GTK_CONTAINER(scrolled), column);
        gtk_container_add(GTK_CONTAINER(window_), scrolled);
        gtk_widget_show_all(scrolled);
    }

    GtkWidget* makeItem(const GalleryItem& item) {
        GtkWidget* column = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
        gtk_container_add(GTK_CONTAINER(column), makeLabel(item.identity.name, TextRole::title));
        gtk_container_add(GTK_CONTAINER(column), makeLabel(item.description, TextRole::secondary));
        GtkWidget* row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, spacing);
        gtk_widget_set_margin_top(row, 6);
        for (const auto& family : item.identity.families)
            gtk_container_add(GTK_CONTAINER(row), makeFamily(item, family));
        gtk_container_add(GTK_CONTAINER(column), row);
        return column;
    }

    GtkWidget* makeFamily(const GalleryItem& item, const WidgetIdentity::Family& family) {
        const auto layOutPreview = [this, preview = item.preview, family = family.family](double scale) {
            ViewContext context = desk_.contextFor(family);
            context.scale = scale;
            return layOutWidget(preview(context), context);
        };
        GtkWidget* preview =
            makeViewArea({sizeOf(family.family), previewScale * session_.appearance().current().textScale,
                          layOutPreview, desk_.wakes()});
        previews_.push_back(preview);

        GtkWidget* button = makeButton(texts_.add, [this, kind = item.identity.kind, family = family.family] {
            if (const auto add = actions_.add) add(kind, family);
        });
        atk_object_set_name(gtk_widget_get_accessible(button),
                            (texts_.add + ": " + item.identity.name + ", " + family.name).c_str());
        GtkWidget* line = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6);
        gtk_box_pack_start(GTK_BOX(line), makeLabel(family.name, TextRole::body), TRUE, TRUE, 0);
        gtk_box_pack_end(GTK_BOX(line), button, FALSE, FALSE, 0);

        GtkWidget* column = gtk_box_new(GTK_ORIENTATION_VERTICAL, 8);
        gtk_widget_set_valign(column, GTK_ALIGN_START);
        gtk_container_add(GTK_CONTAINER(column), preview);
        gtk_container_add(GTK_CONTAINER(column), line);
        return column;
    }

    DesktopSession& session_;
    const WidgetDesk& desk_;
    GalleryTexts texts_;
    std::vector<GalleryItem> items_;
    Actions actions_;
    GtkWidget* window_;
    GtkWidget* introduction_ = nullptr;
    std::vector<GtkWidget*> previews_;
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
