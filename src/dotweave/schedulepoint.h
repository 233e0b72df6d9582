#pragma once

/// @file
/// Points in the queues and at the end of the work where a test can hold threads up. A test defines
/// DOTWEAVE_SCHEDULE_POINTS and the two functions; in the library the calls compile to nothing.

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
