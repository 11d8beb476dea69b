"""Switches the loopback of a new network namespace on, which is down at first."""

import fcntl
import socket
import struct

SIOCGIFFLAGS = 0x8913
SIOCSIFFLAGS = 0x8914
IFF_UP = 1

with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
    request = struct.pack("16sH14x", b"lo", 0)
    answer = fcntl.ioctl(any_socket, SIOCGIFFLAGS, request)
    flags = struct.unpack("16sH14x", answer)[1]
    fcntl.ioctl(any_socket, SIOCSIFFLAGS, struct.pack("16sH14x", b"lo", flags | IFF_UP))
