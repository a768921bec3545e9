#pragma once

// Large pictures are decoded one at a time, so that a few threads do not take a few times the
// memory. One that does not come to an end, at a server that is gone, holds up the others for a
// while only. Any thread.
class DecodingTurn final {
public:
    explicit DecodingTurn(bool isLarge); // waits
    ~DecodingTurn();
    DecodingTurn(const DecodingTurn &) = delete;
    DecodingTurn &operator=(const DecodingTurn &) = delete;

private:
    unsigned _number = 0; // 0: none is needed
};
