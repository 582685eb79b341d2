for i in range(200000):
    print("line %d of %s" % (i, "many"), flush=True)
