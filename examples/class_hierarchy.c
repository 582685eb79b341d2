// A small class hierarchy: vehicles, their fuel and their journeys.
//
//   vorc -morv -morvquiet class_hierarchy.c
//
// A script runs no constructors and hands no arguments to member functions. So each class has a
// setup function, and what a function works on is put into members first. Which function a call
// means is settled by the class that the variable is declared with.

class Vehicle {
  int travelled;            // only the class itself reaches this
protected:
  double tank;
  double need;              // input of go
public:
  char *name;
  int distance;             // input of travel
  double capacity;

  Vehicle() { }
  virtual double consumption() { return 0; }

  void setup(void)
  {
    travelled = 0;
    tank = 0;
  }
  void fill(void) { tank = capacity; }
  int total(void) { return travelled; }
  double left(void) { return tank; }

  // Goes as far as asked if the fuel suffices; 1 or 0.
  int go(void)
  {
    if (need > tank) return 0;
    tank = tank - need;
    travelled = travelled + distance;
    return 1;
  }
};

// In a function of Vehicle, consumption() would be Vehicle's own, so each class
// works out its need itself and leaves the rest to go().
class Car : public Vehicle {
public:
  int passengers;
  double consumption() { return 6.0 + 0.2 * passengers; }
  int travel(void);
};

class Truck : public Vehicle {
public:
  double tons;
  double consumption() { return 22.0 + 1.5 * tons; }
  int travel(void);
};

// Two bases: what it is, and what it has.
class Insured { public: int policy; int insured(void) { return policy > 0; } };
class Taxi : public Car, public Insured {
public:
  int fares;
  int travel(void);
};

int Car::travel(void)
{
  need = distance * consumption() / 100;
  return go();
}

int Truck::travel(void)
{
  need = distance * consumption() / 100;
  return go();
}

int Taxi::travel(void)
{
  if (insured() == 0) return 0;
  need = distance * consumption() / 100;
  if (go() == 0) return 0;
  fares = fares + 1;
  return 1;
}

Car car;
Truck truck;
Taxi taxi;

int main()
{
  Vehicle *any;
  car.setup();   car.name = "car";     car.capacity = 40;    car.passengers = 3;
  truck.setup(); truck.name = "truck"; truck.capacity = 300; truck.tons = 12;
  taxi.setup();  taxi.name = "taxi";   taxi.capacity = 50;   taxi.passengers = 1; taxi.policy = 4711;
  car.fill(); truck.fill(); taxi.fill();

  printf("%s: %.1f, %s: %.1f, %s: %.1f per 100\n", car.name, car.consumption(),
         truck.name, truck.consumption(), taxi.name, taxi.consumption());

  car.distance = 250;
  while (car.travel() == 1) printf("car went %d, %.1f left\n", car.distance, car.left());
  printf("car has gone %d\n", car.total());

  truck.distance = 700;
  if (truck.travel() == 1) printf("truck has gone %d, %.1f left\n", truck.total(), truck.left());

  taxi.distance = 12;
  taxi.travel(); taxi.travel();
  taxi.policy = 0;
  printf("uninsured: %d\n", taxi.travel());
  printf("taxi: %d fares, %d in all\n", taxi.fares, taxi.total());

  // Through a pointer to the base, the members of the base are at hand.
  any = &truck;
  printf("%s has gone %d of its way\n", any->name, any->total());
  printf("sizes: %d %d %d\n", sizeof(Vehicle), sizeof(Car), sizeof(Taxi));
  return 0;
}
