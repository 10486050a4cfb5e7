#pragma once

namespace zorbo {

// The program's one generator of uniform numbers from 0 up to 1. It starts in
// the same state at every start of the program, so each run draws the same
// sequence: a 24-bit linear congruential generator.
class Rnd {
public:
    static constexpr unsigned startState = 327680;

    float next();
    void restart() { m_state = startState; }
    unsigned state() const { return m_state; }

private:
    unsigned m_state = startState;
};

// The process-wide generator.
Rnd &rnd();

// Whole part of a random number times a limit, computed in single precision.
int rndBelow(int limit);

} // namespace zorbo
