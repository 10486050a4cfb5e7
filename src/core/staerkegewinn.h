#pragma once

namespace zorbo {

// Maximum strength for a player of strength s (units of 1/2000 star, read
// from the text without rounding). gain is the gain of the run so far: it
// starts at 0 with each run and is carried from player to player, since a
// strength outside the three ranges 0-3000, 4000-7000 and 8000-12000 draws
// no random number and keeps the gain of the player before. Inside a range
// one number is drawn from the program's generator. The result is the
// strength brought up to a whole star plus the gain, in whole stars.
int staerkegewinn(double s, int &gain);

} // namespace zorbo
