# Convenience wrapper around CMake + Ninja.
#   make demo      install dependencies, build, run the example
#   make test      install dependencies, build, run every test through ctest
#   make bench     build and run the benchmarks
#   make install PREFIX=/usr/local
# Options: SANITIZE=address,undefined | SANITIZE=thread, BUILD_TYPE=Debug|Release|RelWithDebInfo

BUILD_TYPE ?= RelWithDebInfo
SANITIZE ?=
PREFIX ?= /usr/local
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

# Each configuration builds in its own folder.
comma := ,
BUILD_DIR := build/$(BUILD_TYPE)$(if $(SANITIZE),-$(subst $(comma),-,$(SANITIZE)))

CMAKE_FLAGS := -G Ninja -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) -DMOX_SANITIZE=$(SANITIZE) \
               -DCMAKE_INSTALL_PREFIX=$(PREFIX)

.PHONY: all deps configure build test demo bench install fuzz clean

all: build

deps:
	@bash scripts/install-deps.sh

$(BUILD_DIR)/build.ninja:
	cmake -S . -B $(BUILD_DIR) $(CMAKE_FLAGS)

configure: $(BUILD_DIR)/build.ninja

build: deps configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

test: build
	cd $(BUILD_DIR) && ctest --output-on-failure -j $(JOBS) --timeout 600

demo: build
	@bash examples/run-demo.sh $(BUILD_DIR)

bench: deps
	cmake -S . -B build/Release $(filter-out -DCMAKE_BUILD_TYPE=%,$(CMAKE_FLAGS)) -DCMAKE_BUILD_TYPE=Release
	cmake --build build/Release -j $(JOBS)
	@bash bench/run-all.sh build/Release

install: build
	cmake --install $(BUILD_DIR) --prefix $(PREFIX)

fuzz:
	@bash scripts/install-deps.sh --fuzz
	CXX=clang++ cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DMOX_FUZZ=ON \
	  -DMOX_BUILD_TESTS=OFF -DMOX_BUILD_BENCH=OFF -DMOX_SANITIZE=address,undefined
	cmake --build build/fuzz -j $(JOBS)

clean:
	rm -rf build
