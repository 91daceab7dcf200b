// SPDX-License-Identifier: MIT
#include "support/UdpRelay.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int LongestWait = 20; // ms
constexpr std::size_t LongestDatagram = 65536; // bytes

/// A socket that `attach` (bind or connect) has given the address.
template <class Attach>
int attached(Attach attach, const std::string &address, uint16_t port)
{
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(port);
    inet_pton(AF_INET, address.c_str(), &place.sin_addr);
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    if (attach(socket, reinterpret_cast<const sockaddr *>(&place), sizeof place) != 0)
        throw std::system_error(errno, std::generic_category(), address);
    return socket;
}

/// The next datagram, empty without one.
std::string received(int socket, sockaddr_in *sender)
{
    std::string bytes(LongestDatagram, '\0');
    socklen_t size = sizeof *sender;
    const ssize_t length =
        recvfrom(socket, bytes.data(), bytes.size(), 0, reinterpret_cast<sockaddr *>(sender), sender ? &size : nullptr);
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return bytes;
}

} // namespace

UdpRelay::UdpRelay(const std::string &address, const std::string &target, uint16_t port)
    : m_listening(attached(::bind, address, port)), m_asking(attached(::connect, target, port)),
      m_thread([this] { run(); })
{ }

UdpRelay::~UdpRelay()
{
    m_stopping = true;
    m_thread.join();
    close(m_listening);
    close(m_asking);
}

void UdpRelay::run()
{
    while (!m_stopping) {
        pollfd sockets[] = {{m_listening, POLLIN, 0}, {m_asking, POLLIN, 0}};
        poll(sockets, std::size(sockets), timeout());
        if (sockets[0].revents)
            takeRequest();
        if (sockets[1].revents)
            takeAnswer();
        sendDue();
    }
}

/// Until the next answer is due, in milliseconds.
int UdpRelay::timeout() const
{
    if (m_answers.empty())
        return LongestWait;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_answers.begin()->first - Clock::now()).count();
    return static_cast<int>(std::clamp<int64_t>(left, 0, LongestWait));
}

void UdpRelay::takeRequest()
{
    const std::string request = received(m_listening, &m_client);
    const unsigned number = ++requests;
    const bool isLost = silent || (dropEvery != 0 && number % dropEvery == 0);
    if (!isLost)
        send(m_asking, request.data(), request.size(), 0);
}

void UdpRelay::takeAnswer()
{
    const std::string answer = received(m_asking, nullptr);
    if (!silent && !answer.empty())
        m_answers.emplace(Clock::now() + delay.load(), answer);
}

void UdpRelay::sendDue()
{
    const auto firstLater = m_answers.upper_bound(Clock::now());
    for (auto due = m_answers.begin(); due != firstLater; due = m_answers.erase(due)) {
        sendto(m_listening, due->second.data(), due->second.size(), 0, reinterpret_cast<sockaddr *>(&m_client),
               sizeof m_client);
    }
}
