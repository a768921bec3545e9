#include "platform/desktop/GtkSettings.h"

#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

// As the desktop calls itself.
const char *interfaceSchema()
{
    const QByteArray desktop = qgetenv("XDG_CURRENT_DESKTOP");
    return desktop.contains("MATE")      ? "org.mate.interface"
        : desktop.contains("X-Cinnamon") ? "org.cinnamon.desktop.interface"
                                         : "org.gnome.desktop.interface";
}

// What a person has chosen; a default is nobody's wish, and some desktops use no such settings.
QString chosen(GSettings *settings, const char *key)
{
    GSettingsSchema *schema = nullptr;
    g_object_get(settings, "settings-schema", &schema, nullptr);
    const bool isKnown = g_settings_schema_has_key(schema, key);
    g_settings_schema_unref(schema);
    GVariant *value = isKnown ? g_settings_get_user_value(settings, key) : nullptr;
    if (!value)
        return {};
    const OwnedText text(g_variant_is_of_type(value, G_VARIANT_TYPE_STRING)
                             ? g_variant_dup_string(value, nullptr)
                             : g_variant_print(value, FALSE));
    g_variant_unref(value);
    return QString::fromUtf8(text.get());
}

QString settingsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + "/gtk-3.0/settings.ini"_L1;
}

void readFile(AppearanceSigns &signs)
{
    constexpr const char *Group = "Settings";
    GKeyFile *file = g_key_file_new();
    if (g_key_file_load_from_file(file, FileName::toBytes(settingsFile()).constData(),
                                  G_KEY_FILE_NONE, nullptr)) {
        const OwnedText theme(g_key_file_get_string(file, Group, "gtk-theme-name", nullptr));
        signs.theme = QString::fromUtf8(theme.get());
        signs.darkVariant =
            g_key_file_get_boolean(file, Group, "gtk-application-prefer-dark-theme", nullptr);
    }
    g_key_file_free(file);
}

} // namespace

GtkSettings::GtkSettings(QObject *parent)
    : QObject(parent)
    , _interface(watched(interfaceSchema()))
    , _accessibility(watched("org.gnome.desktop.a11y.interface"))
{
    watchFile();
    const auto fileChanged = [this] {
        watchFile(); // a file that was replaced is no longer watched
        Q_EMIT changed();
    };
    connect(&_files, &QFileSystemWatcher::fileChanged, this, fileChanged);
    connect(&_files, &QFileSystemWatcher::directoryChanged, this, fileChanged);
}

GtkSettings::~GtkSettings()
{
    for (GSettings *settings : { _interface.get(), _accessibility.get() })
        if (settings)
            g_signal_handlers_disconnect_by_data(settings, this);
}

AppearanceSigns GtkSettings::signs() const
{
    AppearanceSigns signs;
    readFile(signs);
    if (_interface) {
        const QString scheme = chosen(_interface.get(), "color-scheme");
        if (scheme == "prefer-dark"_L1)
            signs.scheme = AppearanceSigns::PrefersDark;
        else if (scheme == "prefer-light"_L1)
            signs.scheme = AppearanceSigns::PrefersLight;
        if (const QString theme = chosen(_interface.get(), "gtk-theme"); !theme.isEmpty()) {
            signs.theme = theme;
            signs.darkVariant = false;
        }
    }
    signs.contrast = _accessibility && chosen(_accessibility.get(), "high-contrast") == "true"_L1;
    return signs;
}

// Null where it is not installed: GLib ends a program that asks for it all the same.
Owned<GSettings> GtkSettings::watched(const char *schema)
{
    GSettingsSchemaSource *source = g_settings_schema_source_get_default();
    GSettingsSchema *found =
        source ? g_settings_schema_source_lookup(source, schema, TRUE) : nullptr;
    if (!found)
        return {};
    Owned<GSettings> settings(g_settings_new_full(found, nullptr, nullptr));
    g_settings_schema_unref(found);
    const auto tell = +[](GSettings *, const char *, gpointer self) {
        Q_EMIT static_cast<GtkSettings *>(self)->changed();
    };
    g_signal_connect(settings.get(), "changed", G_CALLBACK(tell), this);
    return settings;
}

void GtkSettings::watchFile()
{
    const QString file = settingsFile();
    for (const QString &path : { file, QFileInfo(file).path() })
        if (QFileInfo::exists(path))
            _files.addPath(path);
}
