#include <Desktop/FolderChooser.h>

#include <gtk/gtk.h>

#include <memory>
#include <utility>

#include "GObjects.h"

namespace platform {

void chooseFolder(DesktopSession& session, const std::string& title, const std::string& accept,
                  std::function<void(const std::filesystem::path&)> chosen) {
    using Chosen = std::function<void(const std::filesystem::path&)>;
    session.aboutToPresentWindow();
    GtkFileChooserNative* dialog = gtk_file_chooser_native_new(
        title.c_str(), nullptr, GTK_FILE_CHOOSER_ACTION_SELECT_FOLDER, accept.c_str(), nullptr);
    gtk_file_chooser_set_create_folders(GTK_FILE_CHOOSER(dialog), FALSE);
    // Calendars often lie in ~/.calendars.
    gtk_file_chooser_set_show_hidden(GTK_FILE_CHOOSER(dialog), TRUE);
    gtk_file_chooser_set_current_folder(GTK_FILE_CHOOSER(dialog), g_get_home_dir());
    g_signal_connect(dialog, "response", G_CALLBACK(+[](GtkNativeDialog* self, int response, gpointer data) {
                         const std::unique_ptr<Chosen> call(static_cast<Chosen*>(data));
                         const OwnedText folder(gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(self)));
                         gtk_native_dialog_hide(self);
                         g_object_unref(self);
                         if (response == GTK_RESPONSE_ACCEPT && folder) (*call)(folder.get());
                     }),
                     new Chosen(std::move(chosen)));
    gtk_native_dialog_show(GTK_NATIVE_DIALOG(dialog));
}

}  // namespace platform
