#include "platform/desktop/ColorScheme.h"
#include "tests/support/OwnBus.h"
#include "tests/support/TestFolder.h"
#include "widgets/Colors.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QProcess>
#include <QStyle>
#include <QTest>

namespace {

const auto Space = u"org.freedesktop.appearance"_s;

QString shown()
{
    const QString tone = isDark(QApplication::palette()) ? u"dark"_s : u"light"_s;
    return isHighContrast() ? tone + u" contrast"_s : tone;
}

} // namespace

class Portal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    void set(const QString &key, uint value)
    {
        _values[key] = value;
        Q_EMIT SettingChanged(Space, key, QDBusVariant(value));
    }

public Q_SLOTS:
    QDBusVariant Read(const QString &space, const QString &key) // wraps twice, as the real one does
    {
        return QDBusVariant(QVariant::fromValue(
            QDBusVariant(space == Space ? _values.value(key, 0U) : QVariant(u"?"_s))));
    }

Q_SIGNALS:
    void SettingChanged(const QString &space, const QString &key, const QDBusVariant &value);

private:
    QMap<QString, QVariant> _values;
};

class Xfce final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.xfce.Xfconf")

public:
    void set(const QString &theme)
    {
        _theme = theme;
        Q_EMIT PropertyChanged(u"xsettings"_s, u"/Net/ThemeName"_s, QDBusVariant(theme));
    }

public Q_SLOTS:
    QDBusVariant GetProperty(const QString &, const QString &) { return QDBusVariant(_theme); }

Q_SIGNALS:
    void PropertyChanged(const QString &channel, const QString &property,
                         const QDBusVariant &value);

private:
    QString _theme = u"Greybird-dark"_s;
};

// On a bus of the test's own, with desktops of its own.
class tst_ColorScheme : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QByteArray address = _bus.start();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        qputenv("XDG_CONFIG_HOME", _config.bytes({}));
        qputenv("GSETTINGS_BACKEND", "keyfile"); // which needs no service
        _config.makeFolder(u"gtk-3.0"_s);
        _config.makeFolder(u"glib-2.0/settings"_s);
        _desktop = std::make_unique<QDBusConnection>(
            QDBusConnection::connectToBus(QString::fromLatin1(address), u"desktop"_s));
        QVERIFY(_desktop->isConnected());
    }
    void init()
    {
        QApplication::setPalette(QApplication::style()->standardPalette());
        _config.write(GtkFile, {});
        _config.write(KeyFile, {});
    }
    void cleanupTestCase()
    {
        _desktop.reset();
        QDBusConnection::disconnectFromBus(u"desktop"_s);
        _bus.stop();
    }

    void whatTheSignsMean_data()
    {
        QTest::addColumn<AppearanceSigns>("signs");
        QTest::addColumn<Appearance>("meant");
        using Signs = AppearanceSigns;
        const auto row = [](const char *name, const Signs &signs, bool isDark, bool contrast) {
            QTest::newRow(name) << signs << Appearance { isDark, contrast };
        };
        row("nothing", {}, false, false);
        row("a wish", { .scheme = Signs::PrefersDark }, true, false);
        row("against the theme", { Signs::PrefersLight, false, false, u"Adwaita-dark"_s }, false,
            false);
        row("the theme alone", { .theme = u"Mint-Y-Dark-Aqua"_s }, true, false);
        row("a light theme with dark titles", { .theme = u"Arc-Darker"_s }, false, false);
        row("dark variant", { .darkVariant = true, .theme = u"Adwaita"_s }, true, false);
        row("contrast", { .contrast = true }, false, true);
        row("contrast by the theme", { .theme = u"HighContrast"_s }, false, true);
        row("the same on black", { .theme = u"HighContrastInverse"_s }, true, true);
    }
    void whatTheSignsMean()
    {
        QFETCH(const AppearanceSigns, signs);
        QFETCH(const Appearance, meant);
        QVERIFY(appearanceOf(signs) == meant);
    }

    void thePortalIsFollowed()
    {
        Portal portal;
        portal.set(u"color-scheme"_s, 1);
        offer(portal, u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s);
        QWidget window;
        const ColorScheme scheme;
        QCOMPARE(shown(), u"light"_s); // the window does not wait
        QTRY_COMPARE(shown(), u"dark"_s);
        QVERIFY(isDark(window.palette()));
        portal.set(u"contrast"_s, 1);
        QTRY_COMPARE(shown(), u"dark contrast"_s);
        portal.set(u"color-scheme"_s, 2);
        QTRY_COMPARE(shown(), u"light contrast"_s);
        portal.set(u"contrast"_s, 0);
        QTRY_COMPARE(shown(), u"light"_s);
        QVERIFY(!isDark(window.palette()));
        withdraw(u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s);
    }

    void coloursOfAPlatformThemeStayUnlessTheyAreWrong()
    {
        Portal portal;
        portal.set(u"color-scheme"_s, 2);
        offer(portal, u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s);
        const QColor theirs(0xdd, 0xee, 0xff);
        QApplication::setPalette(QPalette(theirs));
        const ColorScheme scheme;
        // Its answer comes after those of the settings below.
        _config.write(GtkFile, "[Settings]\ngtk-theme-name=Adwaita-dark\n");
        portal.set(u"color-scheme"_s, 1);
        QTRY_COMPARE(shown(), u"dark"_s);
        withdraw(u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s);

        _config.write(GtkFile, {});
        QApplication::setPalette(QPalette(theirs));
        const ColorScheme alone;
        _config.write(KeyFile, "[org/gnome/desktop/a11y/interface]\nhigh-contrast=true\n");
        QTRY_COMPARE(shown(), u"light contrast"_s);
    }

    void withoutAPortalTheSettingsOfOtherProgramsAreFollowed()
    {
        const ColorScheme scheme;
        const std::pair<QByteArray, QString> gtk[] = {
            { "[Settings]\ngtk-theme-name=Adwaita-dark\n", u"dark"_s },
            { "[Settings]\ngtk-theme-name=HighContrast\n", u"light contrast"_s },
            { "", u"light"_s },
            { "[Settings]\ngtk-application-prefer-dark-theme=1\n", u"dark"_s },
        };
        for (const auto &[content, wanted] : gtk) {
            _config.write(GtkFile, content);
            QTRY_COMPARE(shown(), wanted);
        }
        const std::pair<QByteArray, QString> gnome[] = {
            { "[org/gnome/desktop/interface]\ncolor-scheme='prefer-light'\n", u"light"_s },
            { "[org/gnome/desktop/interface]\ngtk-theme='HighContrastInverse'\n",
              u"dark contrast"_s },
            { "[org/gnome/desktop/interface]\ncolor-scheme='prefer-dark'\n", u"dark"_s },
        };
        for (const auto &[content, wanted] : gnome) {
            _config.write(KeyFile, content);
            QTRY_COMPARE(shown(), wanted);
        }
    }

    void soAreThoseOfXfce()
    {
        Xfce xfce;
        offer(xfce, u"org.xfce.Xfconf"_s, u"/org/xfce/Xfconf"_s);
        const ColorScheme scheme;
        QTRY_COMPARE(shown(), u"dark"_s);
        xfce.set(u"Greybird"_s);
        QTRY_COMPARE(shown(), u"light"_s);
        withdraw(u"org.xfce.Xfconf"_s, u"/org/xfce/Xfconf"_s);
    }

private:
    void offer(QObject &object, const QString &service, const QString &path)
    {
        QVERIFY(_desktop->registerObject(
            path, &object, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
        QVERIFY(_desktop->registerService(service));
    }
    void withdraw(const QString &service, const QString &path)
    {
        _desktop->unregisterService(service);
        _desktop->unregisterObject(path);
    }

    inline static const QString GtkFile = u"gtk-3.0/settings.ini"_s;
    inline static const QString KeyFile = u"glib-2.0/settings/keyfile"_s;
    TestFolder _config;
    OwnBus _bus;
    std::unique_ptr<QDBusConnection> _desktop;
};

QTEST_MAIN(tst_ColorScheme)
#include "tst_ColorScheme.moc"
