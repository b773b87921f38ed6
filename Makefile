# make rate          rates a sample shipment, having installed what the build needs
# make test          runs every test, with sanitizers
# make test-linux32  the same on 32-bit Linux     make test-win32  the same on 32-bit Windows
# make test-all      all three, and compares what the three make of the same shipments
# make test-web      tests the rating screen in a browser
# make load          loads the rating service, and holds every answer against cwt rate
# make test-languages  builds and runs the hosts in C#, Pascal and Python
# make test-languages-win32   Pascal's as a program of 32-bit Windows
# make python        builds the Python package    make test-python  tests it
# make test-cluster  rates on hosts of its own by Dask, GNU parallel and Slurm, some of which die
# make fuzz          attacks it with inputs of every kind    make fuzz-minute  for a minute in all
# make bench         measures what rating costs, against what it must cost
# make bench-docs    puts what the last whole run of it gave into docs/performance.md
# make outcomes OLD=DIR   holds the libraries against those of another build
# make win32         packs the library for Windows
# make deb           makes the Debian packages    make test-deb  tries them in a bare Debian
# make lint          checks format and common slips
# make format        formats the sources          make clean       removes build/, but no sample
# make packages      installs what all of these need but bench and deb

BUILD_PACKAGES   = g++ cmake ninja-build libcli11-dev nlohmann-json3-dev libfmt-dev libsqlite3-dev \
    zlib1g-dev libzstd-dev libcpp-httplib-dev pkg-config
TEST_PACKAGES    = googletest binutils locales python3-jsonschema
LINUX32_PACKAGES = g++-multilib
WIN32_PACKAGES   = g++-mingw-w64-i686-win32
WINE_PACKAGES    = debootstrap xvfb xauth
# An npm that is there may be another than Debian's, which does not suffer it.
WEB_PACKAGES     = chromium chromium-driver python3-selenium $(if $(shell command -v npm),,npm)
LANGUAGE_PACKAGES = mono-mcs mono-runtime fp-compiler fpc-source python3-jsonschema
PYTHON_PACKAGES  = pybind11-dev python3-dev python3-pandas
PYTEST_PACKAGES  = python3-dask python3-distributed python3-matplotlib python3-nbclient \
    python3-ipykernel
CLUSTER_PACKAGES = python3-dask python3-distributed parallel slurmctld slurmd slurm-client munge \
    iproute2 procps
FUZZ_PACKAGES    = clang libclang-rt-14-dev
BENCH_PACKAGES   = libbenchmark-dev python3-matplotlib time
DEB_PACKAGES     = build-essential debhelper dh-python help2man lintian debootstrap
LINT_PACKAGES    = clang-format clang-tidy

SAMPLE = sample

# The targets share packages, trees and a display.
.NOTPARALLEL:

.PHONY: rate win32 test test-linux32 test-win32 test-all test-web test-languages \
    test-languages-win32 python test-python test-cluster load compare fuzz fuzz-minute bench \
    bench-docs outcomes lint format clean packages deb test-deb

rate:
	@scripts/install_packages.sh $(BUILD_PACKAGES)
	@scripts/build.sh release
	@scripts/write_sample.sh $(SAMPLE)
	@echo "Rating $(SAMPLE)/shipments/01-deficit-and-discount.json"
	@build/release/bin/cwt rate $(SAMPLE)/shipments/01-deficit-and-discount.json

win32:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(WIN32_PACKAGES)
	@scripts/build.sh release
	@scripts/build.sh win32 -DBUILD_TESTING=OFF
	@scripts/package.sh

deb:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(PYTHON_PACKAGES) $(DEB_PACKAGES)
	@scripts/build_deb.sh

test-deb: deb
	@scripts/test_deb.sh

test:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(TEST_PACKAGES)
	@scripts/build.sh debug
	@scripts/test.sh debug

test-linux32:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(TEST_PACKAGES) $(LINUX32_PACKAGES)
	@scripts/build.sh linux32
	@scripts/test.sh linux32

test-win32:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(TEST_PACKAGES) $(WIN32_PACKAGES) $(WINE_PACKAGES)
	@scripts/build.sh win32
	@scripts/test.sh win32

test-all:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(TEST_PACKAGES) $(LINUX32_PACKAGES) \
	    $(WIN32_PACKAGES) $(WINE_PACKAGES)
	@$(MAKE) --no-print-directory test test-linux32 test-win32 compare

test-web:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(WEB_PACKAGES)
	@scripts/build.sh release
	@scripts/test_web.sh

# LOAD says how: "--seconds 20 --connections 32", say.
load:
	@scripts/install_packages.sh $(BUILD_PACKAGES)
	@HWT_TARGET=cwt scripts/build.sh release
	@/usr/bin/python3 tests/service_load.py build/release/bin/cwt build/load $(LOAD)

test-languages:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(LANGUAGE_PACKAGES)
	@scripts/build.sh release
	@scripts/test_languages.sh

test-languages-win32:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(LANGUAGE_PACKAGES) $(WIN32_PACKAGES) \
	    $(WINE_PACKAGES)
	@scripts/build.sh release
	@for target in languages hundredweight tolvex; do \
	    HWT_TARGET=$$target scripts/build.sh win32 || exit 1; done
	@scripts/test_languages_win32.sh

python:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(PYTHON_PACKAGES)
	@scripts/build.sh release -DHWT_PYTHON=ON

test-python: python
	@scripts/install_packages.sh $(PYTEST_PACKAGES)
	@scripts/test_python.sh

# CLUSTER names one file of them: "costs_of_dask.py", which measures.
test-cluster: python
	@scripts/install_packages.sh $(CLUSTER_PACKAGES)
	@scripts/test_cluster.sh $(CLUSTER)

# What the tests of the three targets and the optimised build have made of the same shipments.
compare:
	@HWT_TARGET=transcript scripts/build.sh release -DBUILD_TESTING=ON
	@build/release/bin/transcript build/release/transcript build/release/bin/cwt
	@scripts/compare_targets.sh

# FUZZ_SECONDS, 60 unless set, is the time of each target; FUZZ_TARGETS names them.
fuzz fuzz-minute:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(LINUX32_PACKAGES) $(FUZZ_PACKAGES)
	@scripts/fuzz.sh $(if $(filter fuzz-minute,$@),--minute)

# BENCH names what is measured, and how: "batch --rows 10000000", say; build/bench/ has the tables
# and the plots then, of a run of some parts by names of their own.
bench:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(BENCH_PACKAGES)
	@HWT_TARGET=hundredweight_benchmark scripts/build.sh release -DHWT_BENCH=ON
	@build/release/bin/hundredweight_benchmark --out build/bench $(BENCH)
	@/usr/bin/python3 scripts/plot_curves.py build/bench

# Puts the tables and plots of the last whole run into the documentation.
bench-docs:
	@/usr/bin/python3 scripts/put_performance.py build/bench docs

# COUNT, 100000 unless set, is how many inputs of each fuzz target both get.
outcomes:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(FUZZ_PACKAGES)
	@scripts/compare_outcomes.sh $(OLD) $(COUNT)

lint:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(TEST_PACKAGES) $(LINT_PACKAGES)
	@scripts/lint.sh

format:
	@scripts/install_packages.sh $(LINT_PACKAGES)
	@scripts/sources.sh | xargs clang-format -i

packages:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(TEST_PACKAGES) $(LINUX32_PACKAGES) \
	    $(WIN32_PACKAGES) $(WINE_PACKAGES) $(WEB_PACKAGES) $(LANGUAGE_PACKAGES) \
	    $(PYTHON_PACKAGES) $(PYTEST_PACKAGES) $(CLUSTER_PACKAGES) $(FUZZ_PACKAGES) $(LINT_PACKAGES)

clean:
	@rm -rf build
