// Where the current session's options come from.
//
// Threads: a thread may have a context of its own; the process-wide one is set while no other thread reads it.
//
// Exceptions: Get is strong; scopes never throw. What the host's GetIBuilderVars throws passes through whoever asks for
// options.
#pragma once

#include <qvsys/RefCntPtr.h>

#include <qvcore/Export.h>

class IBuilderVars;

// What a session offers to the libraries. The host derives from it and puts an object in force with
// SessionContextScope.
class QVCORE_API SessionContext {
public:
    // Whether a context is in force for the calling thread: its own, else the process-wide one.
    static bool HasSessionContext() noexcept;

    // The context in force, or null. Valid while its scope lives.
    static SessionContext* Find() noexcept;

    // The context in force; LogicException "HasSessionContext()" when there is none. Valid while its scope lives.
    static SessionContext& Get();

    // The builder options, or an empty pointer when the session has none. Asked anew at every use.
    virtual RefCntPtr<const IBuilderVars> GetIBuilderVars() const = 0;

protected:
    SessionContext() = default;
    SessionContext(const SessionContext&) = default;
    SessionContext& operator=(const SessionContext&) = default;
    virtual ~SessionContext();
};

// Puts a context in force for as long as the scope lives, and the earlier one back afterwards. Scopes of one kind nest;
// a thread's scope is destroyed on the thread that made it.
class QVCORE_API SessionContextScope {
public:
    enum Scope {
        Thread,   // for the calling thread only
        Process,  // for every thread without a context of its own
    };

    // Requires: context outlives the scope.
    explicit SessionContextScope(SessionContext& context, Scope scope = Thread);
    SessionContextScope(const SessionContextScope&) = delete;
    SessionContextScope& operator=(const SessionContextScope&) = delete;
    ~SessionContextScope();

private:
    Scope m_scope;
    SessionContext* m_previous;  // in force before, may be null
};
