#include "platform/Alerts.h"

Alert Alert::error(const QString &text, const QString &button)
{
    return { .style = Style::Critical,
             .title = localized("Twinleaf - Error"),
             .text = text,
             .buttons = { { Ok, button } },
             .cancel = Ok };
}

Alert Alert::failure(const QString &text, const QString &details, const QString &button)
{
    Alert alert = error(text, button);
    alert.details = details;
    return alert;
}

Alert Alert::question(const QString &text, const QString &details)
{
    return { .style = Style::Informational,
             .title = localized("Twinleaf - Warning"),
             .text = text,
             .details = details,
             .buttons = { { Yes, localized("Yes") }, { No, localized("No") } },
             .cancel = No };
}

Alert Alert::questionMeaningNo(const QString &text, const QString &details)
{
    Alert alert = question(text, details);
    alert.style = Style::Warning;
    alert.buttons.swapItemsAt(0, 1);
    return alert;
}

Alert Alert::overwriteQuestion(const QString &text, const QString &details)
{
    return { .style = Style::Informational,
             .title = localized("Twinleaf - Warning"),
             .text = text,
             .details = details,
             .buttons = { { No, localized("No") },
                          { Yes, localized("Yes") },
                          { All, localized("All") } },
             .cancel = No };
}
