# make rate    rates a sample shipment          make test    runs every test, with sanitizers
# make lint    checks format and common slips   make clean   removes what was built

BUILD_PACKAGES = g++ cmake ninja-build libcli11-dev nlohmann-json3-dev libfmt-dev
TEST_PACKAGES  = libgtest-dev binutils
LINT_PACKAGES  = clang-format clang-tidy

SAMPLE = sample

.PHONY: rate test lint format clean

rate:
	@scripts/install_packages.sh $(BUILD_PACKAGES)
	@scripts/build.sh release -DBUILD_TESTING=OFF
	@echo "Writing the sample data to $(SAMPLE)/"
	@build/release/bin/cwt sample $(SAMPLE)
	@echo "Rating $(SAMPLE)/shipments/01-deficit-and-discount.json"
	@build/release/bin/cwt rate $(SAMPLE)/shipments/01-deficit-and-discount.json

test:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(TEST_PACKAGES)
	@scripts/build.sh debug
	@echo "Running the tests"
	@ctest --preset debug

lint:
	@scripts/install_packages.sh $(BUILD_PACKAGES) $(TEST_PACKAGES) $(LINT_PACKAGES)
	@scripts/lint.sh

format:
	@scripts/install_packages.sh $(LINT_PACKAGES)
	@git ls-files '*.h' '*.c' '*.cpp' | xargs clang-format -i

clean:
	@rm -rf build $(SAMPLE)
