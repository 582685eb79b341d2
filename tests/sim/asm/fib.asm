CPUSIZE 64
ADDRSIZE 64
SECTION   BSS
BEGIN
/*000001:*///int calls;
/*000001:*/ GLOBAL BYTE4 calls;
END   //SECTION BSS
SECTION   CODE
BEGIN
/*000002:*///int fib(int n)
/*000002:*/ PROCEDURE fib
/*000002:*/ BEGIN
/*000002:*/ MOVE8 FRAMEPTR,STACKPTR
/*000002:*/ sub8 STACKPTR,STACKPTR,24
/*000004:*///  calls++;
/*000004:*/loadaddr rr62, calls
/*000004:*/load4 gpr3 ,[rr62]
/*000004:*/inc gpr3
/*000004:*/store4 gpr3 ,[rr62]
/*000005:*///  if (n < 2) return n;
/*000005:*/add8 rr61, FRAMEPTR, 0
/*000005:*/load4 gpr0 ,[rr61]  // load  value of parameter variable 'n' from stack
/*000005:*/loadimm8  rr61,2
/*000005:*/CMPL  gpr1,gpr0,rr61
/*000005:*/cmp8  gpr1,0
/*000005:*/JE fib.c_2
/*000005:*/move8  return_reg, gpr0
/*000005:*/JMP fib_return
/*000005:*/fib.c_2: 
/*000006:*///  return fib(n - 1) + fib(n - 2);
/*000006:*/PUSH8 GPR26
/*000006:*/PUSH8 FRAMEPTR
/*000006:*/PUSH8 LR
/*000006:*/SUB8  gpr2,gpr0,1
/*000006:*/push8 gpr2
/*000006:*/ call  fib 
/*000006:*/ADD8 STACKPTR,STACKPTR,8
/*000006:*/POP8 LR
/*000006:*/POP8 FRAMEPTR
/*000006:*/move8 gpr4 ,return_reg
/*000006:*/sub8 rr62 , FRAMEPTR ,8
/*000006:*/store8 gpr4 , [rr62]
/*000006:*/POP8 GPR26
/*000006:*/PUSH8 GPR26
/*000006:*/PUSH8 FRAMEPTR
/*000006:*/PUSH8 LR
/*000006:*/load4 gpr0 ,[FRAMEPTR,0]
/*000006:*/SUB8  gpr2,gpr0,2
/*000006:*/move8 KERNELREG0,gpr2
/*000006:*/push8 KERNELREG0
/*000006:*/ call  fib 
/*000006:*/ADD8 STACKPTR,STACKPTR,8
/*000006:*/POP8 LR
/*000006:*/POP8 FRAMEPTR
/*000006:*/move8 gpr4 ,return_reg
/*000006:*/POP8 GPR26
/*000006:*/load8 gpr5 ,[FRAMEPTR,-8]
/*000006:*/ADD8  gpr6,gpr5,gpr4
/*000006:*/move8  return_reg, gpr6
/*000006:*/JMP fib_return
/*000007:*/fib_return:
/*000007:*/ MOVE8 STACKPTR,FRAMEPTR
/*000007:*/ MOVE8 PC,LR
/*000007:*/ END //fib
END   //SECTION CODE
