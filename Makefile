# The short names of what one does here. CMake and its presets do the work; PRESET=debug|release|asan|tsan picks one.

PRESET ?= release
BUILD := build/$(PRESET)
JOBS ?= $(shell nproc)

.PHONY: all run test install packages reference translations bench bench-report deps format tidy clean

all: $(BUILD)/build.ninja
	cmake --build --preset $(PRESET) -j $(JOBS)

# Takes a document to a server and back: in windows where there is a display, otherwise with screenshots.
run: $(BUILD)/build.ninja
	cmake --build --preset $(PRESET) -j $(JOBS) --target tljira tljira-standin tessaloom
	scripts/run $(BUILD)

test: all
	ctest --preset $(PRESET)

# Below PREFIX; DESTDIR is honoured.
PREFIX ?= /usr/local
install: all
	DESTDIR=$(abspath $(DESTDIR)) cmake --install $(BUILD) --prefix $(PREFIX)

# Debian packages, in build/packages; scripts/check-packages tries them in a fresh root.
packages: PRESET = release
packages: BUILD = build/release
packages: all
	cpack --config build/release/CPackConfig.cmake -B build/packages

# The public headers and the documents as pages, in build/reference.
reference: all
	rm -rf build/reference
	mkdir build/reference
	cmake --install $(BUILD) --prefix build/reference/installation >build/reference/installation.log
	REFERENCE_HEADERS=build/reference/installation/include REFERENCE_FOLDER=build/reference doxygen

# Brings translations/*.ts up to date with the interface files.
translations: $(BUILD)/build.ninja
	cmake --build --preset $(PRESET) --target translations

# Measures against the peers; bench-report also writes docs/benchmarks.md.
bench: PRESET = release
bench: deps
	cmake --preset release -DTL_BUILD_BENCHMARKS=ON
	cmake --build --preset release -j $(JOBS)
	build/release/bench/tljira-bench

bench-report: PRESET = release
bench-report: deps
	cmake --preset release -DTL_BUILD_BENCHMARKS=ON
	cmake --build --preset release -j $(JOBS)
	build/release/bench/tljira-bench --write docs/benchmarks.md

# What the machine lacks, through apt.
deps:
	scripts/install-packages

$(BUILD)/build.ninja: | deps
	cmake --preset $(PRESET)

SOURCES = $(shell git ls-files '*.h' '*.cpp')

format:
	scripts/install-packages --with-tools
	clang-format -i $(SOURCES)

# The arguments are for a clang that checks the build of another compiler.
tidy: all
	scripts/install-packages --with-tools
	run-clang-tidy -quiet -p $(BUILD) -extra-arg=-Wno-unknown-warning-option \
		-extra-arg=-D__cpp_impl_coroutine=201902L -extra-arg=-DBOOST_ASIO_HAS_CO_AWAIT=1 '^(?!.*/(build|tests)/).*\.cpp$$'

clean:
	rm -rf build
