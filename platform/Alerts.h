#pragma once

#include "base/Localized.h"

#include <QList>

// A modal alert: texts and up to three buttons, the default one first.
struct Alert {
    enum Answer { Ok, Yes, No, All };
    enum class Style { Informational, Warning, Critical };
    struct Button {
        Answer answer;
        QString text;
    };

    Style style = Style::Informational;
    QString title;
    QString text; // plain; file names in it already made fit with FileName::shown
    QString details {}; // small print under the text
    QList<Button> buttons {};
    Answer cancel = Ok; // what Escape and the close box answer

    // "Twinleaf - Error" with one button.
    static Alert error(const QString &text, const QString &button = localized("OK"));
    // The same with the small print: what it is about, and the system's reason.
    static Alert failure(const QString &text, const QString &details,
                         const QString &button = localized("OK"));
    // "Twinleaf - Warning" with "Yes" (default) and "No".
    static Alert question(const QString &text, const QString &details = {});
    // The same with "No" as the default: for what cannot be taken back.
    static Alert questionMeaningNo(const QString &text, const QString &details);
    // "Twinleaf - Warning" with "No" (default), "Yes" and "All".
    static Alert overwriteQuestion(const QString &text, const QString &details);
};

// Asks a person. Any thread: a worker's call runs on the main thread and blocks the worker.
class Alerts {
public:
    virtual ~Alerts() = default;
    virtual Alert::Answer ask(const Alert &alert) = 0;

    // While it lives nobody is asked: each alert answers at once as if it had been cancelled, those
    // on the screen too. Main thread.
    class Silence {
    public:
        explicit Silence(Alerts &alerts)
            : _alerts(alerts)
        {
            _alerts.setSilent(true);
        }
        ~Silence() { _alerts.setSilent(false); }
        Silence(const Silence &) = delete;
        Silence &operator=(const Silence &) = delete;

    private:
        Alerts &_alerts;
    };

protected:
    virtual void setSilent(bool silent) = 0;
};
