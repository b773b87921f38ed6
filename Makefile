# The targets of make. Without one it is rate. Each installs the Debian packages
# that it needs, as root or through sudo.
#
#   rate                  rates a sample shipment
#   help                  prints this
#   dev                   readies a clone for work on it: what build, tests and
#                         lint need, the sample, and a build that is quickly
#                         made, without sanitizers, in build/dev
#
# Before a change lands (.ci/run runs these, but format, and more):
#   test                  every test, with sanitizers
#   test-linux32          the same on 32-bit Linux
#   test-win32            the same on 32-bit Windows, under Wine
#   test-all              all three; compares what they make of the same shipments
#   compare               compares them again, after the three
#   lint                  checks format and common slips
#   format                formats the sources
#
# Tests that need more:
#   test-web              the rating screen in a browser
#   test-languages        the hosts in C#, Pascal and Python
#   test-languages-win32  Pascal's as a program of 32-bit Windows
#   test-python           the Python package, having built it
#   test-cluster          rating by Dask, GNU parallel and Slurm on hosts of its
#                         own, of which some die; CLUSTER=FILE: one file of it
#   test-docs             every command and piece of code of the documentation,
#                         its links, and the site in a browser
#   test-deb              the Debian packages, in a bare Debian
#   test-reproducible     the packages for Debian and Windows, each built twice and
#                         held against each other
#   load                  the rating service under load, every answer held against
#                         cwt rate; LOAD="--seconds 20 --connections 32"
#   fuzz                  inputs of every kind; FUZZ_SECONDS=60 for each target,
#                         FUZZ_TARGETS="shipment directory"
#   fuzz-minute           the same, for a minute in all
#   outcomes OLD=DIR      holds the libraries against those of another build;
#                         COUNT=100000 inputs of each fuzz target
#
# What it costs:
#   bench                 measures rating against what it must cost;
#                         BENCH="batch --rows 10000000": one part
#   bench-docs            puts the last whole run into docs/performance.md
#
# What is handed out:
#   docs                  the documentation as a site, build/docs/html/
#   screenshots           the pictures of the rating screen in docs/screen/, anew
#   python                the Python package
#   win32                 the Windows package, a zip
#   deb                   the Debian packages
#
#   packages              installs what all of these need but bench and deb
#   clean                 removes build/, but no sample

BUILD_PACKAGES   = g++ cmake ninja-build libcli11-dev nlohmann-json3-dev libfmt-dev libsqlite3-dev \
    zlib1g-dev libzstd-dev libcpp-httplib-dev pkg-config
TEST_PACKAGES    = googletest binutils locales python3-jsonschema bash-completion zsh fish \
    help2man pandoc man-db
LINUX32_PACKAGES = g++-multilib
WIN32_PACKAGES   = g++-mingw-w64-i686-win32
ZIP_PACKAGES     = zip unzip
WINE_PACKAGES    = debootstrap xvfb xauth
# An npm that is there may be another than Debian's, which does not suffer it.
WEB_PACKAGES     = chromium chromium-driver python3-selenium $(if $(shell command -v npm),,npm)
LANGUAGE_PACKAGES = mono-mcs mono-runtime fp-compiler fpc-source python3-jsonschema
PYTHON_PACKAGES  = pybind11-dev python3-dev python3-pandas
PYTEST_PACKAGES  = python3-dask python3-distributed python3-matplotlib python3-nbclient \
    python3-ipykernel
CLUSTER_PACKAGES = python3-dask python3-distributed parallel slurmctld slurmd slurm-client munge \
    iproute2 procps
PAGES_PACKAGES   = python3-jsonschema curl git perl chromium chromium-driver python3-selenium
FUZZ_PACKAGES    = clang libclang-rt-14-dev
BENCH_PACKAGES   = libbenchmark-dev python3-matplotlib time
DOCS_PACKAGES    = python3-sphinx furo python3-myst-parser python3-breathe doxygen graphviz
DEB_PACKAGES     = build-essential debhelper dh-python help2man pandoc lintian debootstrap \
    $(DOCS_PACKAGES)
LINT_PACKAGES    = clang-format clang-tidy shellcheck

SAMPLE = sample

# The targets share packages, trees and a display.
.NOTPARALLEL:

.PHONY: rate win32 test test-linux32 test-win32 test-all test-web test-languages \
    test-languages-win32 python test-python test-cluster load compare fuzz fuzz-minute bench \
    bench-docs outcomes lint format clean packages deb test-deb test-reproducible help dev docs \
    test-docs screenshots

rate:
	@scripts/install_packages.sh $(BUILD_PACKAGES)
	@scripts/build.sh release
	@scripts/write_sample.sh $(SAMPLE) build/release/bin/cwt
	@echo "Rating $(SAMPLE)/shipments/01-deficit-and-discount.json"
	@build/release/bin/cwt rate $(SAMPLE)/shipments/01-deficit-and-discount.json

# The comments that this file begins with.
help:
	@sed -n '/^$$/q; s/^# \{0,1\}//p' Makefile

dev:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(TEST_PACKAGES) $(LINT_PACKAGES)
	@scripts/build.sh dev
	@scripts/write_sample.sh $(SAMPLE) build/dev/bin/cwt

docs:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(DOCS_PACKAGES)
	@scripts/build.sh release
	@scripts/build_docs.sh

# The pages have Python in them.
test-docs: python docs
	@scripts/install_packages.sh $(PAGES_PACKAGES)
	@scripts/test_docs.sh

win32:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(WIN32_PACKAGES) $(ZIP_PACKAGES)
	@scripts/build.sh release
	@scripts/build.sh win32 -DBUILD_TESTING=OFF
	@scripts/package.sh

deb:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(PYTHON_PACKAGES) $(DEB_PACKAGES)
	@scripts/build_deb.sh

test-deb: deb
	@scripts/test_deb.sh

test-reproducible:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(PYTHON_PACKAGES) $(DEB_PACKAGES) \
	    $(WIN32_PACKAGES) $(ZIP_PACKAGES)
	@scripts/test_reproducible.sh

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

screenshots:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(WEB_PACKAGES) python3-pil
	@scripts/build.sh release
	@scripts/take_screenshots.sh

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

test-cluster: python
	@scripts/install_packages.sh $(CLUSTER_PACKAGES)
	@scripts/test_cluster.sh $(CLUSTER)

# What the tests of the three targets and the optimised build have made of the same shipments.
compare:
	@HWT_TARGET=transcript scripts/build.sh release -DBUILD_TESTING=ON
	@build/release/bin/transcript build/release/transcript build/release/bin/cwt
	@scripts/compare_targets.sh

fuzz fuzz-minute:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(LINUX32_PACKAGES) $(FUZZ_PACKAGES)
	@scripts/fuzz.sh $(if $(filter fuzz-minute,$@),--minute)

# build/bench/ has the tables and the plots then, of a run of some parts by names of their own.
bench:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(BENCH_PACKAGES)
	@HWT_TARGET=hundredweight_benchmark scripts/build.sh release -DHWT_BENCH=ON
	@build/release/bin/hundredweight_benchmark --out build/bench $(BENCH)
	@/usr/bin/python3 scripts/plot_curves.py build/bench

bench-docs:
	@/usr/bin/python3 scripts/put_performance.py build/bench docs

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
	    $(WIN32_PACKAGES) $(ZIP_PACKAGES) $(WINE_PACKAGES) $(WEB_PACKAGES) $(LANGUAGE_PACKAGES) \
	    $(PYTHON_PACKAGES) $(PYTEST_PACKAGES) $(CLUSTER_PACKAGES) $(FUZZ_PACKAGES) $(LINT_PACKAGES) \
	    $(DOCS_PACKAGES) $(PAGES_PACKAGES)

clean:
	@rm -rf build
