#include "pictures/PictureLoader.h"

#include <algorithm>

namespace {

constexpr int SmallThreads = 2;
constexpr std::chrono::hours AsLongAsItTakes { 24 }; // the reader has its own limit

} // namespace

PictureLoader::PictureLoader(ThumbnailCache cache, ForeignFiles *reader)
    : _thumbnails(std::make_shared<const Thumbnails>(std::move(cache)))
    , foreignFiles(reader)
    , _small { Kind::Thumbnail, PictureWorkers(SmallThreads) }
    , _large { Kind::Picture, PictureWorkers(1) }
    , _readers(1, AsLongAsItTakes)
{
}

void PictureLoader::wantThumbnails(const QList<Wish> &wishes, const QSize &bound)
{
    want(_small, wishes, bound);
}

void PictureLoader::wantPictures(const QList<Wish> &wishes, const QSize &bound)
{
    want(_large, wishes, bound);
}

void PictureLoader::forget()
{
    want(_small, {}, {});
    want(_large, {}, {});
}

void PictureLoader::want(Wanted &wanted, const QList<Wish> &wishes, const QSize &bound)
{
    if (wanted.bound != bound)
        wanted.forReader.clear();
    wanted.bound = bound;
    wanted.wishes = wishes;
    wanted.forReader.removeIf([&](quint64 id) {
        return std::ranges::none_of(wishes, [id](const Wish &wish) { return wish.id == id; });
    });
    std::vector<PictureWorkers::Job> jobs;
    for (const Wish &wish : wishes) {
        if (wanted.forReader.contains(wish.id))
            continue;
        jobs.push_back(job(wanted, wish,
                           [thumbnails = _thumbnails, kind = wanted.kind, path = wish.path, bound] {
                               return kind == Kind::Thumbnail ? thumbnails->thumbnail(path, bound)
                                                              : Thumbnails::picture(path, bound);
                           }));
    }
    wanted.workers.want(std::move(jobs));
    wantFromReader();
}

// The large ones first: a person has chosen them.
void PictureLoader::wantFromReader()
{
    std::vector<PictureWorkers::Job> jobs;
    for (Wanted *wanted : { &_large, &_small })
        for (const Wish &wish : std::as_const(wanted->wishes))
            if (wanted->forReader.contains(wish.id))
                jobs.push_back(job(*wanted, wish,
                                   [thumbnails = _thumbnails, reader = foreignFiles,
                                    kind = wanted->kind, path = wish.path, bound = wanted->bound] {
                                       return kind == Kind::Thumbnail
                                           ? thumbnails->thumbnailByReader(path, bound, reader)
                                           : Thumbnails::pictureByReader(path, bound, reader);
                                   }));
    _readers.want(std::move(jobs));
}

PictureWorkers::Job PictureLoader::job(Wanted &wanted, const Wish &wish,
                                       std::function<LoadedPicture()> decode)
{
    const auto take = [this, &wanted, wish, bound = wanted.bound](const LoadedPicture &picture) {
        this->take(wanted, wish, bound, picture);
    };
    return { .key = { wish.id, wanted.bound },
             .work =
                 [decode = std::move(decode), take] { // worker thread
                     return [picture = decode(), take] { take(picture); };
                 },
             .givenUp = [take] { take({}); } };
}

void PictureLoader::take(Wanted &wanted, const Wish &wish, const QSize &bound,
                         const LoadedPicture &picture)
{
    const auto wished =
        std::ranges::find_if(wanted.wishes, [&](const Wish &other) { return other.id == wish.id; });
    if (picture.outcome == LoadedPicture::Outcome::Elsewhere) {
        if (wished == wanted.wishes.end() || wanted.bound != bound
            || wanted.forReader.contains(wish.id))
            return;
        wanted.forReader.append(wish.id);
        return wantFromReader();
    }
    if (wished != wanted.wishes.end() && wanted.bound == bound) {
        wanted.wishes.erase(wished);
        wanted.forReader.removeOne(wish.id);
    }
    if (wanted.kind == Kind::Thumbnail)
        Q_EMIT thumbnailArrived(wish.id, picture);
    else
        Q_EMIT pictureArrived(wish.id, bound, picture);
}

bool PictureLoader::end(QDeadlineTimer deadline)
{
    const bool smallEnded = _small.workers.end(deadline);
    const bool largeEnded = _large.workers.end(deadline);
    return _readers.end(deadline) && smallEnded && largeEnded;
}
