#pragma once

#include <functional>

/// @file
/// Memory that runs out at will. The test program replaces every form of operator new and, where the C
/// library allows it, malloc, calloc and realloc; both count what is asked for in the whole process, in the
/// threads that a creation starts as well.

/// Whose requests are counted and refused.
enum class ERequester {
    Caller, // the thread that makes the CRefusedMemory; its requests come in the same order every time
    Others, // every other thread; their requests come in any order, so the n-th is one more of them each time
    All,
};

enum class ERefusal {
    Once,       // that request alone
    FromThenOn, // and all later ones
};

enum class ERequestKind {
    New,      // operator new
    CLibrary, // malloc and its kin, as the C library itself uses them for the state of a new thread
};

struct SRefusalPlan {
    long number = 0; ///< of the first refused request, counted from 0
    ERequester requester = ERequester::All;
    ERefusal refusal = ERefusal::Once;
    ERequestKind kind = ERequestKind::New;
};

/// Refuses memory by plan while it lives. One at a time.
class CRefusedMemory {
public:
    explicit CRefusedMemory(const SRefusalPlan& plan);
    CRefusedMemory(const CRefusedMemory&) = delete;
    CRefusedMemory& operator=(const CRefusedMemory&) = delete;
    ~CRefusedMemory();

    [[nodiscard]] bool HasRefused() const;
};

/// Requests of the own thread that are neither counted nor refused while it lives.
class CSparedRequests {
public:
    CSparedRequests();
    CSparedRequests(const CSparedRequests&) = delete;
    CSparedRequests& operator=(const CSparedRequests&) = delete;
    ~CSparedRequests();
};

/// Pieces of memory from operator new that nobody has given back yet.
long LiveAllocations_Count();

/// Whether requests of ERequestKind::CLibrary can be refused: in a plain build with the GNU C library that
/// was told to keep no used stacks, as with them it asks for nothing.
bool CLibraryMemory_CanBeRefused();

struct SAttempt {
    bool wasRefused = false; ///< whether any request was
    long leftBehind = 0;     ///< pieces of memory that may stay allocated after this attempt
};

/// Makes an attempt with request 0 refused, another with request 1 refused and so on, until one meets no
/// refusal. After each, no memory but what the attempt names and no thread may be left.
/// @return how many attempts met a refusal
int Refuse_EachInTurn(SRefusalPlan plan, const std::function<SAttempt(const SRefusalPlan&)>& attempt);
