"""Parts of cwt batch over hosts by Slurm."""
import subprocess

import page
import parts
import year
from hosts import wait_for
from parts import END, START, Parts, broken_rates
from slurm import Slurm


def setUpModule():
    global hosts, folder
    hosts, folder, _ = parts.begin()


class SlurmArray(Parts):
    @classmethod
    def setUpClass(cls):
        cls.slurm = Slurm(hosts)
        cls.addClassCleanup(cls.slurm.close)

    def submit(self):
        (command,) = page.commands("Slurm")
        return subprocess.Popen(["bash", "-c", command], cwd=folder, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True,
                                env=year.environment(**self.slurm.variables))

    def states(self):
        """State and exit code of every task of the last array, and how often it was begun anew."""
        tasks = [dict(field.split("=", 1) for field in line.split() if "=" in field)
                 for line in self.slurm("scontrol", "show", "job", "-o").splitlines()]
        last = max(int(task["ArrayJobId"]) for task in tasks)
        return [(task["JobState"], task["ExitCode"], int(task["Restarts"]))
                for task in tasks if int(task["ArrayJobId"]) == last]

    def test_parts_of_a_node_that_dies_go_on_elsewhere(self):
        run = self.submit()
        wait_for(lambda: hosts["node1"].processes("cwt"), START, "parts at work")
        hosts["node1"].die()
        said = run.communicate(timeout=END)
        self.assertEqual(run.returncode, 0, said)
        states = self.states()
        self.assertEqual([(state, code) for state, code, _ in states], [("COMPLETED", "0:0")] * 8)
        self.assertGreater(sum(restarts for _, _, restarts in states), 0)
        self.assert_whole()

    def test_a_part_that_is_broken_has_failed(self):
        with broken_rates():
            run = self.submit()
            run.communicate(timeout=END)
        self.assertNotEqual(run.returncode, 0)
        self.assertEqual({(state, code) for state, code, _ in self.states()}, {("FAILED", "2:0")})
