#include "reader/Questions.h"

#include "reader/Confinement.h"
#include "reader/Extraction.h"
#include "reader/PictureDecoding.h"

#include <QImage>

#include <cerrno>
#include <cstring>
#include <exception>
#include <sys/socket.h>

namespace {

using namespace ReaderWords;
using Outcome = ForeignFiles::Outcome;

Answer toldContents(FileBytes &file, const QByteArray &name, char *memory)
{
    Findings findings;
    Answer answer;
    answer.outcome = quint32(extract(file, name, findings));
    if (Outcome(answer.outcome) != Outcome::Read)
        return answer;
    const ForeignContents &contents = findings.contents();
    const QByteArray attributes = bytesOf(contents.attributes);
    std::memcpy(memory, attributes.constData(), size_t(attributes.size()));
    std::memcpy(memory + attributes.size(), contents.text.constData(),
                size_t(contents.text.size()) * sizeof(QChar));
    answer.attributesSize = quint32(attributes.size());
    answer.textSize = quint32(contents.text.size());
    answer.textWasCut = contents.textWasCut;
    return answer;
}

Answer shownPicture(FileBytes &file, const QSize &bound, char *memory)
{
    Answer answer;
    const DecodedPicture picture = decodePicture(file, bound);
    const QImage image = picture.image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    answer.outcome = quint32(image.isNull() ? Outcome::Failed : Outcome::Read);
    if (image.isNull())
        return answer;
    const size_t row = size_t(image.width()) * 4;
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(memory + row * size_t(y), image.constScanLine(y), row);
    answer.width = picture.size.width();
    answer.height = picture.size.height();
    answer.shownWidth = image.width();
    answer.shownHeight = image.height();
    return answer;
}

} // namespace

Questions::Questions(int socket, char *memory)
    : _socket(socket)
    , _memory(memory)
{
}

void Questions::answerAll(quint32 closed)
{
    const Hello hello { .closed = closed };
    if (!send(&hello, sizeof hello))
        return;
    Question question;
    QByteArray name;
    Descriptor descriptor;
    while (take(question, name, descriptor)) {
        Confinement::startProcessorLimit();
        FileBytes file(std::exchange(descriptor, {}));
        const Answer given = answer(question, file, name);
        if (!send(&given, sizeof given))
            return;
    }
}

Answer Questions::answer(const Question &question, FileBytes &file, const QByteArray &name) const
{
    Answer answer;
    answer.outcome = quint32(Outcome::Nothing);
    // The libraries throw at what they cannot read, and at the end of memory.
    try {
        if (file.isRegular() && question.work == Work::Picture)
            answer = shownPicture(file, QSize(question.width, question.height), _memory);
        else if (file.isRegular())
            answer = toldContents(file, name, _memory);
    } catch (...) {
        answer = {};
        answer.outcome = quint32(Outcome::Failed);
    }
    answer.number = question.number;
    return answer;
}

bool Questions::take(Question &question, QByteArray &name, Descriptor &file) const
{
    name = QByteArray(NameLimit, Qt::Uninitialized);
    iovec parts[] { { &question, sizeof question }, { name.data(), size_t(name.size()) } };
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] {};
    msghdr message {};
    message.msg_iov = parts;
    message.msg_iovlen = std::size(parts);
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    ssize_t size = 0;
    do
        size = recvmsg(_socket, &message, MSG_CMSG_CLOEXEC);
    while (size < 0 && errno == EINTR);
    const cmsghdr *const come = size < ssize_t(sizeof question) ? nullptr : CMSG_FIRSTHDR(&message);
    if (!come || come->cmsg_type != SCM_RIGHTS)
        return false;
    int number = -1;
    std::memcpy(&number, CMSG_DATA(come), sizeof number);
    file = Descriptor(number);
    name.truncate(size - qsizetype(sizeof question));
    return true;
}

bool Questions::send(const void *packet, size_t size) const
{
    return ::send(_socket, packet, size, MSG_NOSIGNAL) == ssize_t(size);
}
