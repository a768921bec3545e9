#include "sheets/viewer/Viewer.h"

#include "base/Localized.h"
#include "files/Waiting.h"
#include "platform/OpenDialogs.h"
#include "sheets/images/PictureView.h"
#include "sheets/viewer/FindBar.h"
#include "sheets/viewer/TextArea.h"
#include "sheets/viewer/ViewerSheet.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Icons.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds Settling { 120 };
constexpr std::chrono::milliseconds Late { 400 };
constexpr qint64 MostCopied = 16 << 20; // characters

QString whyNotShown(const FileBytes::Opened &opened)
{
    using enum FileBytes::Refusal;
    switch (opened.refusal) {
    case Pipe:
        return localized(
            "This is a pipe. Reading it would take away what another program waits for.");
    case Socket:
        return localized("This is a socket. There is nothing in it to be shown.");
    case Device:
        return localized("This is a device. Devices are not read.");
    default:
        return filled(localized("This file cannot be read: %@"),
                      QString::fromLocal8Bit(opened.error.message().c_str()));
    }
}

QString number(qint64 value)
{
    return QLocale().toString(value);
}

// What is typed for a search: in the mode of bytes, those, or a text in quotation marks.
std::optional<SearchPattern> patternOf(QString text, const TextForm &form,
                                       Qt::CaseSensitivity sensitivity)
{
    if (form.asBytes) {
        if (auto pattern = SearchPattern::ofBytes(text))
            return pattern;
        if (text.size() > 2 && text.startsWith(u'"') && text.endsWith(u'"'))
            text = text.sliced(1, text.size() - 2);
    }
    return SearchPattern::ofText(text, form.encoding, sensitivity);
}

QString copied(const FileBytes &file, const TextForm &form, qint64 from, qint64 to)
{
    if (form.asBytes)
        return QString::fromLatin1(
            file.read(from, std::min(to - from, MostCopied / 3)).toHex(' ').toUpper());
    QString text = form.encoding.decoded(file.read(from, std::min(to - from, MostCopied)));
    if (from == 0 && text.startsWith(QChar(QChar::ByteOrderMark)))
        text.remove(0, 1);
    return text.replace(QChar(u'\0'), QChar(QChar::ReplacementCharacter)); // others end there
}

} // namespace

Viewer::Viewer(const Services &services, QWidget *window)
    : _services(services)
    , mainWindow(window)
    , _pictures(ThumbnailCache(), services.foreignFiles)
{
    _boundSettled.setSingleShot(true);
    _boundSettled.setInterval(Settling);
    _boundSettled.callOnTimeout(this, &Viewer::wantPicture);
    _late.setSingleShot(true);
    _late.setInterval(Late);
    _late.callOnTimeout(this, &Viewer::showStatus);
    connect(&_pictures, &PictureLoader::pictureArrived, this,
            [this](quint64 id, const QSize &bound, const LoadedPicture &picture) {
                if (id == _picture)
                    takePicture(bound, picture);
            });
    connect(&_find, &FindRun::ended, this, &Viewer::takeHit);
    connect(&_find, &FindRun::progressed, this, [this](int percent) {
        if (sheet)
            sheet->findBar->showState(
                filled(localized("Searching... %@"), QString::number(percent) + u" %"_s));
    });
}

Viewer::~Viewer() = default;

bool Viewer::view(const QString &path)
{
    const OpenDialogs::Guard guard(_services.openDialogs);
    const auto viewed =
        _services.waiting.forAnswer(path, [path] { return ViewedFile::open(path); });
    if (!viewed)
        return true; // given up
    if (viewed->opened.refusal == FileBytes::Refusal::Folder)
        return false;
    if (!sheet)
        show(path, *viewed);
    return true;
}

void Viewer::show(const QString &path, const ViewedFile &viewed)
{
    ViewerSheet open(path, mainWindow);
    sheet = &open;
    _file = viewed.opened.file;
    ++_picture;
    _trouble.clear();
    if (_left.size.isValid())
        open.resize(_left.size);
    open.wraps->setChecked(_left.wraps);
    open.findBar->ignoreCase->setChecked(_left.ignoresCase);
    open.findBar->field->setText(_left.text);
    connectSheet();
    if (_file) {
        open.setEncoding(viewed.form.encoding);
        open.setMode(viewed.mode);
        open.textArea->setForm(viewed.form);
        takeStretch(viewed.firstPage);
        setMode(viewed.mode);
    } else {
        open.showMessage(whyNotShown(viewed.opened));
    }
    open.run();
    close();
}

void Viewer::connectSheet()
{
    ViewerSheet &open = *sheet;
    connect(open.textArea, &TextArea::stretchWanted, this, &Viewer::readStretch);
    connect(open.textArea, &TextArea::viewChanged, this, &Viewer::showStatus);
    connect(open.textArea, &TextArea::copyAsked, this, &Viewer::copy);
    connect(open.pictureView, &PictureView::boundChanged, &_boundSettled,
            qOverload<>(&QTimer::start));
    connect(&open, &ViewerSheet::modeChosen, this, &Viewer::setMode);
    connect(&open, &ViewerSheet::encodingChosen, this, [this] {
        TextForm form = sheet->textArea->form();
        form.encoding = sheet->encoding();
        sheet->textArea->setForm(form);
        sheet->textArea->setFocus();
    });
    connect(&open, &ViewerSheet::findAsked, this,
            [this] { find(FileSearch::Direction::Forwards); });
    connect(&open, &ViewerSheet::findBackwardsAsked, this,
            [this] { find(FileSearch::Direction::Backwards); });
    connect(&open, &ViewerSheet::stopAsked, this, [this](bool &stopped) {
        stopped = _find.stop();
        if (stopped)
            sheet->findBar->showState(localized("The search was stopped."));
    });
}

// By whatever it is closed.
void Viewer::close()
{
    _left = { sheet->size(), sheet->wraps->isChecked(), sheet->findBar->ignoreCase->isChecked(),
              sheet->findBar->field->text() };
    _find.stop();
    _pages.drop();
    _copies.drop();
    _pictures.forget();
    _boundSettled.stop();
    _late.stop();
    _file.reset();
    sheet.clear();
}

void Viewer::setMode(ViewMode mode)
{
    if (!_file)
        return;
    if (mode == ViewMode::Picture) {
        sheet->status->setText(localized("Waiting for the picture..."));
        wantPicture();
    } else {
        TextForm form = sheet->textArea->form();
        form.asBytes = mode == ViewMode::Bytes;
        sheet->textArea->setForm(form);
        if (const auto selection = sheet->textArea->selection(); !selection.isEmpty())
            sheet->textArea->select(selection.anchor, selection.position); // so that it is seen
    }
    showStatus();
}

void Viewer::readStretch(qint64 offset, int before, int behind)
{
    if (!_file)
        return;
    const TextForm form = sheet->textArea->form();
    _pages.drop(); // one for another form
    _late.start();
    _pages.start(
        [file = _file, form, offset, before, behind] { // worker thread
            return Stretch::read(*file, form, offset, before, behind);
        },
        [this](const Stretch &stretch) { takeStretch(stretch); });
}

void Viewer::takeStretch(const Stretch &stretch)
{
    _late.stop();
    _trouble =
        stretch.error() ? QString::fromLocal8Bit(stretch.error().message().c_str()) : QString();
    sheet->textArea->takeStretch(stretch);
}

void Viewer::copy()
{
    const TextArea::Selection &selection = sheet->textArea->selection();
    if (!_file || selection.isEmpty())
        return;
    _copies.drop();
    const TextForm form = sheet->textArea->form();
    const bool isCut = selection.end() - selection.start() > MostCopied / (form.asBytes ? 3 : 1);
    _copies.start(
        [file = _file, form, from = selection.start(), to = selection.end()] {
            return copied(*file, form, from, to); // worker thread
        },
        [this, isCut](const QString &text) {
            QGuiApplication::clipboard()->setText(text);
            if (isCut)
                _trouble = localized("Only the start of the selection was copied.");
            showStatus();
        });
}

void Viewer::wantPicture()
{
    _boundSettled.stop();
    if (sheet && _file && sheet->mode() == ViewMode::Picture)
        _pictures.wantPictures({ { _picture, _file->ownPath() } }, sheet->pictureView->bound());
}

void Viewer::takePicture(const QSize &bound, const LoadedPicture &picture)
{
    if (!sheet || !_file || bound != sheet->pictureView->bound())
        return;
    if (picture.outcome != LoadedPicture::Outcome::Decoded) {
        const QString text = localized("This picture cannot be shown.");
        sheet->status->setText(text);
        return sheet->pictureView->showMessage(text, themedIcon(u"image-broken"_s));
    }
    sheet->pictureView->showPicture(QPixmap::fromImage(picture.image), picture.size);
    sheet->status->setText(
        QString::asprintf("%d x %d", picture.size.width(), picture.size.height()));
}

void Viewer::find(FileSearch::Direction direction)
{
    FindBar &bar = *sheet->findBar;
    const TextArea &area = *sheet->textArea;
    if (!_file || sheet->mode() == ViewMode::Picture || bar.field->text().isEmpty())
        return;
    const auto pattern =
        patternOf(bar.field->text(), area.form(),
                  bar.ignoreCase->isChecked() ? Qt::CaseInsensitive : Qt::CaseSensitive);
    bar.show();
    if (!pattern)
        return bar.showState(localized("This encoding has no such characters."));
    const auto &selection = area.selection();
    const bool isForwards = direction == FileSearch::Direction::Forwards;
    const qint64 from = selection.isEmpty() ? sheet->textArea->topOffset()
                                            : selection.start() + (isForwards ? 1 : 0);
    _direction = direction;
    bar.showState(filled(localized("Searching... %@"), QString()));
    _find.start(_file, *pattern, from, direction);
}

void Viewer::takeHit(const FileSearch::Hit &hit)
{
    if (!sheet)
        return;
    if (hit.offset < 0)
        return sheet->findBar->showState(localized("Not found"));
    const bool isForwards = _direction == FileSearch::Direction::Forwards;
    sheet->findBar->showState(!hit.wentAround  ? QString()
                                  : isForwards ? localized("Found from the start on")
                                               : localized("Found from the end on"));
    sheet->textArea->select(hit.offset, hit.offset + hit.length);
}

void Viewer::showStatus()
{
    if (!sheet || !_file || sheet->mode() == ViewMode::Picture)
        return;
    TextArea &area = *sheet->textArea;
    area.setAccessibleDescription(area.shownText()); // painted, it says nothing by itself
    QStringList parts;
    if (_pages.anyWanted() && !_late.isActive())
        parts.append(localized("Waiting for the disk..."));
    parts.append(QString::number(int(area.shareShown() * 100)) + u" %"_s);
    parts.append(
        filled(localized("Byte %@ of %@"), number(area.topOffset()), number(area.fileSize())));
    if (const auto &selection = area.selection(); !selection.isEmpty())
        parts.append(
            filled(localized("%@ bytes selected"), number(selection.end() - selection.start())));
    if (!_trouble.isEmpty())
        parts.append(_trouble);
    sheet->status->setText(parts.join(u"   "_s));
}

bool Viewer::end(QDeadlineTimer deadline)
{
    const bool pagesEnded = _pages.end(deadline);
    const bool copiesEnded = _copies.end(deadline);
    const bool findEnded = _find.end(deadline);
    return _pictures.end(deadline) && pagesEnded && copiesEnded && findEnded;
}
