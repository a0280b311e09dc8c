#include "tests/torture/preload/Calls.h"

#include <cerrno>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

using torture::Fate;
using torture::fateOf;
using torture::Function;
using torture::isRefused;
using torture::share;

STAND_IN(int, socket, int domain, int type, int protocol)
{
    return isRefused(Function::Socket) ? -1 : PASS_ON(socket, domain, type, protocol);
}

STAND_IN(int, connect, int descriptor, const sockaddr* address, socklen_t length)
{
    return isRefused(Function::Connect, descriptor) ? -1 : PASS_ON(connect, descriptor, address, length);
}

STAND_IN(ssize_t, send, int descriptor, const void* bytes, std::size_t size, int flags)
{
    const Fate fate = fateOf(Function::Send, descriptor);
    return fate == Fate::Refused ? -1 : PASS_ON(send, descriptor, bytes, share(fate, size), flags);
}

STAND_IN(ssize_t, sendto, int descriptor, const void* bytes, std::size_t size, int flags, const sockaddr* address,
         socklen_t length)
{
    const Fate fate = fateOf(Function::Send, descriptor);
    return fate == Fate::Refused ? -1 : PASS_ON(sendto, descriptor, bytes, share(fate, size), flags, address, length);
}

STAND_IN(ssize_t, sendmsg, int descriptor, const msghdr* message, int flags)
{
    return isRefused(Function::Send, descriptor) ? -1 : PASS_ON(sendmsg, descriptor, message, flags);
}

STAND_IN(ssize_t, recv, int descriptor, void* buffer, std::size_t size, int flags)
{
    const Fate fate = fateOf(Function::Receive, descriptor);
    return fate == Fate::Refused ? -1 : PASS_ON(recv, descriptor, buffer, share(fate, size), flags);
}

STAND_IN(ssize_t, recvfrom, int descriptor, void* buffer, std::size_t size, int flags, sockaddr* address,
         socklen_t* length)
{
    const Fate fate = fateOf(Function::Receive, descriptor);
    return fate == Fate::Refused ? -1
                                 : PASS_ON(recvfrom, descriptor, buffer, share(fate, size), flags, address, length);
}

STAND_IN(ssize_t, recvmsg, int descriptor, msghdr* message, int flags)
{
    return isRefused(Function::Receive, descriptor) ? -1 : PASS_ON(recvmsg, descriptor, message, flags);
}

STAND_IN(ssize_t, __recv_chk, int descriptor, void* buffer, std::size_t size, std::size_t room, int flags)
{
    const Fate fate = fateOf(Function::Receive, descriptor);
    return fate == Fate::Refused ? -1 : PASS_ON(__recv_chk, descriptor, buffer, share(fate, size), room, flags);
}

STAND_IN(int, poll, pollfd* descriptors, nfds_t count, int timeout)
{
    return isRefused(Function::Poll) ? -1 : PASS_ON(poll, descriptors, count, timeout);
}

STAND_IN(int, ppoll, pollfd* descriptors, nfds_t count, const timespec* timeout, const sigset_t* signals)
{
    return isRefused(Function::Poll) ? -1 : PASS_ON(ppoll, descriptors, count, timeout, signals);
}

STAND_IN(int, __poll_chk, pollfd* descriptors, nfds_t count, int timeout, std::size_t room)
{
    return isRefused(Function::Poll) ? -1 : PASS_ON(__poll_chk, descriptors, count, timeout, room);
}

STAND_IN(int, __ppoll_chk, pollfd* descriptors, nfds_t count, const timespec* timeout, const sigset_t* signals,
         std::size_t room)
{
    return isRefused(Function::Poll) ? -1 : PASS_ON(__ppoll_chk, descriptors, count, timeout, signals, room);
}

STAND_IN(int, socketpair, int domain, int type, int protocol, int* ends)
{
    return isRefused(Function::Pipe) ? -1 : PASS_ON(socketpair, domain, type, protocol, ends);
}

STAND_IN(int, pipe, int* ends)
{
    return isRefused(Function::Pipe) ? -1 : PASS_ON(pipe, ends);
}

STAND_IN(int, pipe2, int* ends, int flags)
{
    return isRefused(Function::Pipe) ? -1 : PASS_ON(pipe2, ends, flags);
}

STAND_IN(int, eventfd, unsigned value, int flags)
{
    return isRefused(Function::Pipe) ? -1 : PASS_ON(eventfd, value, flags);
}

STAND_IN(int, pthread_create, pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
         void* argument)
{
    const int before = errno;
    if (isRefused(Function::Thread)) {
        const int reason = errno;
        errno = before;
        return reason;
    }
    return PASS_ON(pthread_create, thread, attributes, start, argument);
}
