#include "builtins/bindings.h"
#include "builtins/commands.h"

namespace vorc {

namespace {

void IthreadCreateBuiltin(BuiltinCall& call) {
  const auto command = call.Text(0);
  call.ReturnInt(command ? ThreadsOf(call).MorvThreadCreate(*command) : -1);
}

void IthreadJoinBuiltin(BuiltinCall& call) {
  call.ReturnInt(ThreadsOf(call).MorvThreadJoin(call.Int(0).value_or(-1)));
}

void IthreadBarrierBuiltin(BuiltinCall& call) {
  call.ReturnInt(ThreadsOf(call).MorvThreadBarrier());
}

void IthreadAffinitySetBuiltin(BuiltinCall& call) {
  const auto id = call.Int(0);
  const auto mask = call.Int(1);
  call.ReturnInt(id && mask ? ThreadsOf(call).MorvThreadAffinitySet(*id, static_cast<uint32_t>(*mask)) : 0);
}

void CpuZeroBuiltin(BuiltinCall& call) {
  call.ReturnInt(static_cast<int32_t>(MorvCpuZero()));
}

void CpuSetBuiltin(BuiltinCall& call) {
  const auto cpu = call.Int(0);
  const auto mask = call.Int(1);
  call.ReturnInt(cpu && mask ? static_cast<int32_t>(MorvCpuSet(*cpu, static_cast<uint32_t>(*mask))) : 0);
}

void IcpuCountBuiltin(BuiltinCall& call) {
  call.ReturnInt(MorvCpuCount());
}

void IsleepBuiltin(BuiltinCall& call) {
  MorvSleepMs(call.Int(0).value_or(0));
  call.ReturnInt(0);
}

constexpr BuiltinBinding kBuiltins[] = {
    {"ithread_create", IthreadCreateBuiltin},
    {"ithread_join", IthreadJoinBuiltin},
    {"ithread_barrier", IthreadBarrierBuiltin},
    {"ithread_affinity_set", IthreadAffinitySetBuiltin},
    {"CPU_ZERO", CpuZeroBuiltin},
    {"CPU_SET", CpuSetBuiltin},
    {"icpu_count", IcpuCountBuiltin},
    {"isleep", IsleepBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> ThreadBuiltins() {
  return kBuiltins;
}

}  // namespace vorc
