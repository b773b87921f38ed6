"""Slurm on the hosts of a test: the controller on head, the others rate."""
import os
import subprocess
import tempfile

from hosts import wait_for

_TERMS = """
ClusterName=scale
SlurmctldHost=head
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket={folder}/munge.socket,cred_expire=5
StateSaveLocation={folder}/state
SlurmdSpoolDir={folder}/spool-%n
SlurmctldPidFile={folder}/slurmctld.pid
SlurmdPidFile={folder}/slurmd-%n.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
MpiDefault=none
ReturnToService=2
SlurmdTimeout=6
MessageTimeout=3
NodeName=node[1-2] CPUs=2 State=UNKNOWN
PartitionName=main Nodes=ALL Default=YES
"""


class Slurm:
    def __init__(self, hosts):
        self._folder = tempfile.TemporaryDirectory(prefix="hundredweight-slurm-")
        folder = self._folder.name
        os.chmod(folder, 0o755)
        self._write("slurm.conf", _TERMS.format(folder=folder).encode())
        self._write("cgroup.conf", b"CgroupPlugin=cgroup/v1\n")
        self._write("munge.key", os.urandom(128))
        self.variables = {"SLURM_CONF": f"{folder}/slurm.conf"}
        self._environment = {**os.environ, **self.variables}
        files = ("key-file", "socket", "pid-file", "log-file", "seed-file")
        options = [f"--{file}={folder}/munge.{file.split('-')[0]}" for file in files]
        self._log = open(f"{folder}/log", "w+")
        hosts["head"].start("munged", "--foreground", "--force", *options, stderr=self._log)
        wait_for(lambda: os.path.exists(f"{folder}/munge.socket"), 60, "munged")
        self._start(hosts["head"], "slurmctld")
        for name in ("node1", "node2"):
            self._start(hosts[name], "slurmd")
        wait_for(lambda: self("sinfo", "--noheader", "--format=%D %t").split() == ["2", "idle"], 60,
                 "nodes of Slurm")

    def _write(self, name, content):
        path = f"{self._folder.name}/{name}"
        with open(os.open(path, os.O_WRONLY | os.O_CREAT, 0o600), "wb") as file:
            file.write(content)

    def _start(self, host, program):
        host.start(program, "-D", env=self._environment, stdout=self._log, stderr=self._log)

    def __call__(self, *command):
        return subprocess.run(command, capture_output=True, text=True, env=self._environment).stdout

    def close(self):
        self._log.close()
        self._folder.cleanup()
