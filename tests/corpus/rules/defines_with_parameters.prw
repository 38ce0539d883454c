#define F64(a) (a*a)
F64(x+1) f64(2) F64
#define F65(a, b) g(b,a)
F65( 1 , h(2,3) )
#define F66(a,b) g(b,a)
F66(1)
F66(1,2,3)
#define F67(a) g(a,A,"a",aa)
F67(1)
#define F68(a) a
#define G68(a) F68(a)+F68(a)
x := G68(F68(1))
#define F69(a) [a]
F69(i)
#define F70 1
#define F70(a) a
F70(2) F70
#define F71(a) \<a\>
x F71(2)
#define F72(a) a
#ifdef F72
#define G72 yes
#endif
G72
