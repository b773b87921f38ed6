"""Hosts of a cluster on one machine: each with its own network, name and processes.

The files are those of the machine, as those of a cluster are on a shared directory. Nothing is left
when a test ends, in whatever way: a host lives as long as the pipe that its first process reads.
"""
import os
import signal
import socket
import subprocess
import tempfile
import time

BRIDGE = "switch"


def run(*command):
    done = subprocess.run(command, capture_output=True, text=True)
    assert done.returncode == 0, f"{' '.join(command)}: {done.stderr}"
    return done.stdout


def address(number):
    return f"10.77.0.{number}"


def wait_for(condition, seconds, what):
    end = time.monotonic() + seconds
    while not condition():
        assert time.monotonic() < end, f"{what}: not within {seconds} seconds"
        time.sleep(0.05)


class Host:
    def __init__(self, name, number):
        self.name, self.address = name, address(number)
        self._cable = f"cable{number}"
        self._programs = []
        self._first = subprocess.Popen(
            ["unshare", "--net", "--uts", "--pid", "--mount-proc", "--fork", "--kill-child",
             "sh", "-c", "hostname $0 && echo up && exec cat", name],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        assert self._first.stdout.readline() == b"up\n"
        self.first = run("pgrep", "-P", str(self._first.pid)).strip()
        run("ip", "link", "add", self._cable, "type", "veth", "peer", "name", "eth0", "netns", self.first)
        run("ip", "link", "set", self._cable, "master", BRIDGE, "up")
        for command in (f"addr add {self.address}/24 dev eth0", "link set eth0 up", "link set lo up"):
            run(*self._inside("ip", *command.split()))

    def _inside(self, *command):
        return "nsenter", "--target", self.first, "--net", "--uts", "--pid", "--mount", *command

    def start(self, *command, **options):
        """Starts a program on the host."""
        program = subprocess.Popen(self._inside(*map(str, command)), stdin=subprocess.DEVNULL, **options)
        self._programs.append(program)

    def processes(self, name):
        """How many processes of a program run on the host."""
        names = run(*self._inside("ps", "-e", "-o", "comm=")).splitlines()
        return names.count(name)

    def cut(self):
        run("ip", "link", "set", self._cable, "down")

    def mend(self):
        run("ip", "link", "set", self._cable, "up")

    def die(self):
        """Ends every process of the host at once, as when its power fails."""
        os.kill(int(self.first), signal.SIGKILL)
        self.close()

    def close(self):
        self._first.stdin.close()
        for program in (self._first, *self._programs):
            program.wait()
        self._first.stdout.close()


_SHELL = """#!/bin/sh
host=$1
shift
[ "$1" != -- ] || shift
export SHELL=/bin/sh  # GNU parallel runs nothing where none is set; ssh sets it.
exec nsenter --target "$(cat "$(dirname "$0")/$host.first")" --net --uts --pid --mount sh -c "$*"
"""


class Hosts:
    """Hosts on one switch; this process stands there too, at the first address."""

    def __init__(self, *names):
        run("ip", "link", "set", "lo", "up")
        run("ip", "link", "add", BRIDGE, "type", "bridge")
        run("ip", "addr", "add", f"{address(1)}/24", "dev", BRIDGE)
        run("ip", "link", "set", BRIDGE, "up")
        numbers = {socket.gethostname(): 1, **{name: number for number, name in enumerate(names, 2)}}
        with tempfile.NamedTemporaryFile("w") as names_of_hosts:
            names_of_hosts.write("127.0.0.1 localhost\n")
            names_of_hosts.writelines(f"{address(number)} {name}\n" for name, number in numbers.items())
            names_of_hosts.flush()
            run("mount", "--bind", names_of_hosts.name, "/etc/hosts")
        self.all = {name: Host(name, numbers[name]) for name in names}

    def __getitem__(self, name):
        return self.all[name]

    def restart(self, name):
        """A host dies, and is there again with nothing running."""
        number = int(self.all[name].address.split(".")[-1])
        self.all[name].die()
        self.all[name] = Host(name, number)

    def shell(self, folder):
        """A program that takes the place of ssh between the hosts."""
        path = folder / "shell"
        path.write_text(_SHELL)
        path.chmod(0o755)
        for name, host in self.all.items():
            (folder / f"{name}.first").write_text(host.first)
        return str(path)

    def close(self):
        for host in self.all.values():
            host.close()
        run("ip", "link", "del", BRIDGE)
        run("umount", "/etc/hosts")
