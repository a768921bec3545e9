#include "platform/desktop/TypeApplications.h"

#include "files/PathText.h"
#include "platform/desktop/GioTypes.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

// Files that are looked into for their type. Of further ones the names have to do.
constexpr qsizetype MostRead = 64;

using Applications = std::vector<Owned<GAppInfo>>;

OwnedText contentType(const QString &path)
{
    // The local files alone: the desktop's virtual file systems would want a session bus first.
    const QByteArray bytes = FileName::toBytes(path);
    const Owned<GFile> file(g_vfs_get_file_for_path(g_vfs_get_local(), bytes.constData()));
    const Owned<GFileInfo> info(g_file_query_info(file.get(),
                                                  G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE,
                                                  G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    if (!info)
        return nullptr;
    // A desktop entry's own default application would be the one that runs it.
    if (path.endsWith(".desktop"_L1))
        return OwnedText(g_strdup("text/plain"));
    return OwnedText(g_strdup(g_file_info_get_content_type(info.get())));
}

OwnedText typeByName(const QString &path)
{
    const QByteArray name = FileName::toBytes(PathText::lastComponent(path));
    return OwnedText(g_content_type_guess(name.constData(), nullptr, 0, nullptr));
}

// Each once; nothing when one of the files has none that is known, or is a folder.
QList<QByteArray> typesOf(const QStringList &paths)
{
    QList<QByteArray> types;
    for (qsizetype number = 0; number < paths.size(); ++number) {
        const OwnedText type =
            number < MostRead ? contentType(paths[number]) : typeByName(paths[number]);
        if (!type || g_content_type_is_unknown(type.get())
            || g_content_type_equals(type.get(), "inode/directory"))
            return {};
        if (!types.contains(type.get()))
            types.append(type.get());
    }
    return types;
}

Applications ofType(const QByteArray &type)
{
    Applications applications;
    GList *infos = g_app_info_get_all_for_type(type.constData());
    for (GList *each = infos; each; each = each->next)
        applications.emplace_back(G_APP_INFO(each->data));
    g_list_free(infos);
    return applications;
}

QString standardOf(const QByteArray &type)
{
    const Owned<GAppInfo> info(g_app_info_get_default_for_type(type.constData(), false));
    return info ? pathOf(info.get()) : QString();
}

bool opensFiles(GAppInfo *info)
{
    return g_app_info_supports_uris(info) || g_app_info_supports_files(info);
}

} // namespace

QString TypeApplications::defaultFor(const QString &path)
{
    const OwnedText type = contentType(path);
    return type ? standardOf(type.get()) : QString();
}

QString TypeApplications::textEditor()
{
    return standardOf("text/plain");
}

Workspace::FileApplications TypeApplications::forFiles(const QStringList &paths)
{
    using Application = Workspace::FileApplications::Application;
    const QList<QByteArray> types = typesOf(paths);
    if (types.isEmpty())
        return {};
    Workspace::FileApplications found;
    for (const Owned<GAppInfo> &info : ofType(types.first())) {
        const QString path = pathOf(info.get());
        if (!path.isEmpty() && opensFiles(info.get()))
            found.all.append({ path, QString::fromUtf8(g_app_info_get_display_name(info.get())) });
    }
    for (const QByteArray &type : types.sliced(1)) {
        QStringList able;
        for (const Owned<GAppInfo> &info : ofType(type))
            able.append(pathOf(info.get()));
        found.all.removeIf([&](const Application &each) { return !able.contains(each.path); });
    }
    const QString standard = standardOf(types.first());
    const auto isStandard = [&](const Application &each) { return each.path == standard; };
    if (std::ranges::any_of(found.all, isStandard)
        && std::ranges::all_of(
            types, [&](const QByteArray &type) { return standardOf(type) == standard; }))
        found.standard = standard;
    std::stable_partition(found.all.begin(), found.all.end(), isStandard);
    if (types.size() == 1) {
        found.type = QString::fromUtf8(types.first());
        const OwnedText kind(g_content_type_get_description(types.first().constData()));
        found.kind = QString::fromUtf8(kind.get());
    }
    return found;
}

bool TypeApplications::setDefault(const QString &application, const QString &type, QString *reason)
{
    const QByteArray wanted = type.toUtf8();
    for (const Owned<GAppInfo> &info : ofType(wanted)) {
        if (pathOf(info.get()) != application)
            continue;
        GError *error = nullptr;
        const bool set = g_app_info_set_as_default_for_type(info.get(), wanted.constData(), &error);
        const QString why = wordsOf(error);
        if (reason)
            *reason = why;
        return set;
    }
    return false; // it went meanwhile
}
