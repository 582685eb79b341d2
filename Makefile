# The short road. Everything here is a thin wrapper over plain CMake:
#   cmake -S . -B build && cmake --build build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
PREFIX ?= /usr/local

configure = cmake -S . -B $(1) $(2) >/dev/null && cmake --build $(1) -j $(JOBS)

.PHONY: all build run test sanitize clang mutants bench install clean

all: build

build:
	@scripts/install_dependencies.sh build test
	@$(call configure,build,-DCMAKE_BUILD_TYPE=Release)

# Every example, run with the program just built.
run: build
	@scripts/run_examples.sh build/vorc examples

test: build
	@scripts/run_tests.sh build

# The same tests with addresses, leaks and undefined behaviour checked.
sanitize:
	@scripts/install_dependencies.sh build test
	@$(call configure,build-sanitize,-DCMAKE_BUILD_TYPE=Release -DVORC_SANITIZE=ON)
	@scripts/run_tests.sh build-sanitize

# A second compiler's opinion: warnings are errors there too.
clang:
	@scripts/install_dependencies.sh build test clang
	@$(call configure,build-clang,-DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=clang++)

# Which changes of FILE=src/... no script case sees. COUNT and TOPICS bound the work.
mutants:
	@scripts/install_dependencies.sh build test
	@$(call configure,build-mutants,-DCMAKE_BUILD_TYPE=Release)
	@tests/mutants.py build-mutants $(FILE) --count $(or $(COUNT),20) $(TOPICS)

bench:
	@scripts/install_dependencies.sh build test bench
	@$(call configure,build-bench,-DCMAKE_BUILD_TYPE=Release -DVORC_BENCH=ON -DVORC_TESTS=OFF)
	@python3 bench/run.py build-bench/vorc
	@python3 bench/compile.py build-bench/vorc
	@python3 bench/tensors.py build-bench/vorc
	@python3 bench/companions.py build-bench/vorc
	@build-bench/bench/micro_bench
	@build-bench/bench/codec_bench
	@build-bench/bench/pic_bench
	@python3 bench/codes.py build-bench/vorc build-bench/bench/pictures/code_pictures
	@build-bench/bench/codes_bench

install: build
	@cmake --install build --prefix $(DESTDIR)$(PREFIX)

clean:
	@rm -rf build build-sanitize build-clang build-bench build-fuzz build-mutants
