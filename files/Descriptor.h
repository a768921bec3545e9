#pragma once

#include <unistd.h>

#include <utility>

// An open descriptor that closes itself.
class Descriptor final {
public:
    Descriptor() = default;
    explicit Descriptor(int number)
        : _number(number)
    {
    }
    ~Descriptor() { close(); }
    Descriptor(Descriptor &&other) noexcept
        : _number(std::exchange(other._number, -1))
    {
    }
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(_number, other._number);
        return *this;
    }

    int number() const { return _number; }
    bool isOpen() const { return _number >= 0; }
    void close()
    {
        if (_number >= 0)
            ::close(std::exchange(_number, -1));
    }

private:
    int _number = -1;
};
