# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""A passive BGP speaker: it takes any session, says that it can all families of the table, and records every UPDATE.

For tests alone: it decides nothing and announces nothing."""

import socket
import threading
import time

import wire

HOLD_SECONDS = 180


def capabilities(own_as: int) -> bytes:
    """Route refresh, AS numbers of four octets (RFC 6793), extended messages left out so that all speakers write alike."""
    families = b"".join(
        bytes([1, 4]) + afi.to_bytes(2, "big") + bytes([0, safi]) for afi, safi in wire.FAMILIES.values()
    )
    return families + bytes([2, 0]) + bytes([65, 4]) + own_as.to_bytes(4, "big")


def open_message(own_as: int, router_id: str) -> bytes:
    offered = capabilities(own_as)
    parameters = bytes([2, len(offered)]) + offered
    body = bytes([4]) + own_as.to_bytes(2, "big") + HOLD_SECONDS.to_bytes(2, "big") + socket.inet_aton(router_id)
    return wire.message(wire.OPEN, body + bytes([len(parameters)]) + parameters)


class Listener:
    """Listens at once, on a port of the kernel's choice; `updates` grows while the session lasts."""

    def __init__(self, address: str, own_as: int) -> None:
        self.own_as = own_as
        self.address = address
        self.updates: list[bytes] = []
        self.last = time.monotonic()
        self.established = threading.Event()
        self.socket = socket.create_server((address, 0))
        self.port = self.socket.getsockname()[1]
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self) -> None:
        while True:
            try:
                session, _ = self.socket.accept()
            except OSError:
                return
            with session:
                try:
                    self.talk(session)
                except OSError:
                    pass  # the speaker left; it may come again

    def talk(self, session: socket.socket) -> None:
        session.sendall(open_message(self.own_as, self.address))
        while True:
            head = receive(session, 19)
            body = receive(session, int.from_bytes(head[16:18], "big") - 19)
            kind = head[18]
            self.last = time.monotonic()
            if kind == wire.OPEN:
                session.sendall(wire.message(wire.KEEPALIVE))
            elif kind == wire.KEEPALIVE:
                self.established.set()
                session.sendall(wire.message(wire.KEEPALIVE))
            elif kind == wire.UPDATE:
                self.updates.append(body)
            elif kind == wire.NOTIFICATION:
                return

    def wait_for_quiet(self, quiet_seconds: float, limit_seconds: float) -> None:
        """Until nothing came for a while."""
        end = time.monotonic() + limit_seconds
        while time.monotonic() < end and time.monotonic() - self.last < quiet_seconds:
            time.sleep(0.05)

    def close(self) -> None:
        self.socket.close()


def receive(session: socket.socket, size: int) -> bytes:
    data = b""
    while len(data) < size:
        piece = session.recv(size - len(data))
        if not piece:
            raise ConnectionError("the speaker closed the session")
        data += piece
    return data
