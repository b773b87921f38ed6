"""Blocks of the pages that this test does not run, by their page and first words, and why."""

TESTED_BY = {
    "docs/your-first-tariff.md": "TariffPages runs every command and compares what it prints",
    "docs/python.md": "tests/python/docs_test.py runs every example and compares what it prints",
    "docs/scale.md": "tests/cluster runs its scripts and commands on hosts of its own",
}

NOT_RUN = {
    ("CONTRIBUTING.md", "make dev"): "readies a clone, and runs every test",
    ("CONTRIBUTING.md", ".ci/run"): "runs this test too",
    ("README.md", "make "): "builds and tests the whole, as the stages of .ci/run do",
    ("README.md", "cmake --install"): "installs as root; the test Installed does, under another prefix",
    ("README.md", "find_package"): "tests/installed/CMakeLists.txt has it, and is built",
    ("docs/explain.md", "FREIGHT BILL"): "the test ExplainedBill compares it",
    ("docs/hosting.md", "#include"): "the test HostingExample compiles and runs it",
    ("docs/hosting.md", "30303 GA"): "the test HostingExample compares it",
    ("docs/hosting.md", "typedef int32_t (HWT_CALL*"):
        "wants Windows; docs/windows_host.c does the same, and the test WindowsHost runs it",
    ("docs/languages.md", "mcs "): "tests/languages/hosts_test.py compiles and runs the host",
    ("docs/languages.md", "fpc "): "tests/languages/hosts_test.py compiles and runs the host",
    ("docs/languages.md", "Private Declare"): "Debian has no compiler of Visual Basic",
    ("docs/messages.md", "cwt: refused"): "two lines of different runs; the test Messages holds their texts",
    ("docs/performance.md", "make bench"): "measures for minutes",
    ("docs/rows.md", '{"schema"'): "cut; tests/schema_test.py holds every row against its schema",
    ("docs/service.md", "location /"): "a setting of nginx",
    ("docs/service.md", "make load"): "loads the service for minutes",
    ("docs/service.md", "ln -s /srv/freight/current /etc"): "wants systemd and root",
    ("docs/service.md", "[Service]"): "a setting of systemd",
    ("docs/windows.md", "bin\\cwt"): "wants the package for Windows; scripts/package.sh rates with it",
    ("fuzz/README.md", "make "): "fuzzes for minutes; a stage of .ci/run does",
    ("fuzz/README.md", "build/fuzz"): "wants a finding",
    ("fuzz/README.md", "git worktree"): "builds another version of the whole",
}
