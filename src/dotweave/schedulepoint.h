#pragma once

/// @file
/// Points of the queues and of the end of the work at which a thread may be held up at will. A test build defines
/// DOTWEAVE_SCHEDULE_POINTS and the two functions; the library itself compiles to nothing here.

namespace dotweave {

#if defined(DOTWEAVE_SCHEDULE_POINTS)
/// Between two steps whose order against other threads matters.
void SchedulePoint();
/// A sleep for an item ran its whole time. @param wasMissed  though there was something to wake up for
void SchedulePoint_WaitExpired(bool wasMissed);
#else
inline void SchedulePoint() {}
inline void SchedulePoint_WaitExpired(bool /*wasMissed*/) {}
#endif

} // namespace dotweave
